@echo off
rem Rehearses a firmware update on a simulated server, in a fresh folder
rem under %TEMP%, with the lab's stand-ins in place of the vendor tools:
rem   rehearse.cmd            the sample storcli server (samples\)
rem   rehearse.cmd arcconf    the sample arcconf server
rem It shows the server, runs the update, shows the images now staged, power
rem cycles the server and runs again. No real controller is touched: the
rem stand-ins come first on the path and answer for the simulated server.
setlocal
set "here=%~dp0"
set "family=%~1"
if "%family%"=="" set "family=storcli"
if not exist "%here%samples\%family%-server.scenario" (
  echo rehearse: no sample server "%family%": storcli or arcconf 1>&2
  exit /b 2
)
set "switches="
if "%family%"=="arcconf" set "switches=--psoc 1 -s 1"

set "work=%TEMP%\sasfwctl-rehearsal-%RANDOM%%RANDOM%"
mkdir "%work%"
copy "%here%sasfwctl.exe" "%work%" >nul
copy "%here%lab\storcli64.exe" "%work%" >nul
copy "%here%samples\%family%-server.scenario" "%work%\lab.scenario" >nul
copy "%here%samples\%family%-profile.txt" "%work%\profile.txt" >nul
rem The profile's images: any content will do, the lab knows their versions.
for /f "usebackq tokens=4,6 delims=," %%a in ("%work%\profile.txt") do (
  echo sample image>"%work%\%%a"
  echo sample image>"%work%\%%b"
)
set "PATH=%here%lab;%PATH%"
cd /d "%work%"

echo == the simulated server (%family%-server.scenario), in %work%
labctl show
call :update
echo == the server after the update: new images are staged until a power cycle
labctl show
echo == power cycle
labctl powercycle
labctl show
call :update
echo == what the run left in %work%
echo log: %work%\log.txt
exit /b 0

:update
echo == sasfwctl.exe -p profile.txt %switches%
sasfwctl.exe -p profile.txt %switches%
echo == exit code %ERRORLEVEL%
exit /b 0
