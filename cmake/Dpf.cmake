# Debian's tree of the plug-in wrapper, copied into the build folder and mended there by
# cmake/dpf/dpf.patch. Copied anew when the patch or the package has changed.
find_package(PkgConfig REQUIRED)  # the wrapper looks for it inside functions, where it would be lost
find_path(ORVANTESCO_DPF_SOURCE cmake/DPF-plugin.cmake PATHS /usr/share/dpf REQUIRED
  DOC "Folder of the plug-in wrapper's sources (Debian: dpf-source)")
find_program(PATCH_PROGRAM patch REQUIRED)

set(dpf_patch ${CMAKE_SOURCE_DIR}/cmake/dpf/dpf.patch)
set(dpf_folder ${CMAKE_BINARY_DIR}/dpf-source)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${dpf_patch})

file(SHA256 ${dpf_patch} dpf_patch_hash)
file(SHA256 ${ORVANTESCO_DPF_SOURCE}/distrho/src/DistrhoPluginVST3.cpp dpf_package_hash)
set(dpf_wanted "${dpf_patch_hash} ${dpf_package_hash}")
set(dpf_found "")
if(EXISTS ${dpf_folder}/patched)
  file(READ ${dpf_folder}/patched dpf_found)
endif()
if(NOT dpf_found STREQUAL dpf_wanted)
  file(REMOVE_RECURSE ${dpf_folder})
  file(COPY ${ORVANTESCO_DPF_SOURCE}/ DESTINATION ${dpf_folder})
  execute_process(COMMAND ${PATCH_PROGRAM} -p1 -s -i ${dpf_patch}
    WORKING_DIRECTORY ${dpf_folder} RESULT_VARIABLE dpf_patch_failed)
  if(dpf_patch_failed)
    file(REMOVE_RECURSE ${dpf_folder})
    message(FATAL_ERROR "cmake/dpf/dpf.patch does not fit ${ORVANTESCO_DPF_SOURCE}")
  endif()
  file(WRITE ${dpf_folder}/patched ${dpf_wanted})
endif()

add_subdirectory(${dpf_folder} ${CMAKE_BINARY_DIR}/dpf EXCLUDE_FROM_ALL)
