# The Windows release, sasfwctl-<version>-win64.zip: the utility, the lab's
# stand-ins and samples to rehearse with beside it (never in its folder, so
# that the utility there drives the real tools), and the operator guide.
install(TARGETS sasfwctl RUNTIME DESTINATION .)
install(FILES samples/rehearse.cmd DESTINATION .)
install(FILES docs/operator-guide.md DESTINATION docs)
install(FILES samples/storcli-profile.txt samples/storcli-server.scenario
              samples/arcconf-profile.txt samples/arcconf-server.scenario
        DESTINATION samples)
install(TARGETS lab_storcli64 lab_arcconf labctl RUNTIME DESTINATION lab)
install(FILES lab/README.md DESTINATION lab)
install(DIRECTORY lab/scenarios DESTINATION lab)

set(CPACK_GENERATOR ZIP)
# Debug information stays in the build tree; a server gets the programs alone.
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-win64)
include(CPack)
