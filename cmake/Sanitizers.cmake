# -DSASFWCTL_SANITIZE=ON builds everything with AddressSanitizer and
# UndefinedBehaviorSanitizer; any finding aborts the process.
option(SASFWCTL_SANITIZE "Build with ASan and UBSan" OFF)
if(SASFWCTL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
