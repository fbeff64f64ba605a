#ifdef _WIN32
int shell_status = 1;
#endif
