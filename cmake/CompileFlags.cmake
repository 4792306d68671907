# One interface target carries every flag that the project's own code is built with.
find_program(CCACHE ccache)
if(CCACHE)
  # Clones in different folders share their results, precompiled headers included.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_library(orvantesco_flags INTERFACE)
target_compile_options(orvantesco_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Werror
  # An int that indexes an array is no narrowing: g++ leaves it out of -Wconversion anyway.
  -Wno-sign-conversion
  # Recursions must give the same bits at every processor level, so products and sums
  # are never contracted into fused operations behind our back.
  -ffp-contract=off)

if(ORVANTESCO_SANITIZE)
  target_compile_options(orvantesco_flags INTERFACE
    -fsanitize=${ORVANTESCO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvantesco_flags INTERFACE -fsanitize=${ORVANTESCO_SANITIZE})
endif()

# Lets ccache see through a precompiled header.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(pch_for_ccache -fpch-preprocess)
else()
  set(pch_for_ccache "SHELL:-Xclang -fno-pch-timestamp")
endif()
