# The linker script and the .def file, both from exports/vekm6.txt.
set(VEK_EXPORT_LIST ${CMAKE_SOURCE_DIR}/exports/vekm6.txt)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${VEK_EXPORT_LIST})
file(STRINGS ${VEK_EXPORT_LIST} VEK_EXPORTS REGEX "^vek")

function(vek_exports target)
  if(WIN32)
    list(JOIN VEK_EXPORTS "\n" lines)
    set(def ${CMAKE_BINARY_DIR}/vekm6.def)
    file(CONFIGURE OUTPUT ${def} CONTENT "LIBRARY vekm6.dll\nEXPORTS\n${lines}\n" @ONLY)
    configure_file(${CMAKE_SOURCE_DIR}/_SRC/core/platform/vekm6.rc.in ${CMAKE_BINARY_DIR}/vekm6.rc @ONLY)
    enable_language(RC)
    target_sources(${target} PRIVATE ${def} ${CMAKE_BINARY_DIR}/vekm6.rc)
    # stdcall functions are `name@bytes` to the linker; the fix-up exports them under the plain names of the list.
    target_link_options(${target} PRIVATE -static -Wl,--enable-stdcall-fixup -Wl,--dynamicbase -Wl,--nxcompat
                        -Wl,--no-insert-timestamp -Wl,--exclude-all-symbols)
    set_target_properties(${target} PROPERTIES PREFIX "")
    # The import library has to offer `name@bytes` to callers and ask the DLL for the plain name.
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
      COMMAND ${CMAKE_COMMAND} -DNM=${CMAKE_NM} -DDLLTOOL=${CMAKE_DLLTOOL} "-DOBJECTS=$<TARGET_OBJECTS:vekm6_core>"
              -DLIBRARY=$<TARGET_LINKER_FILE:${target}> -DWORK=${CMAKE_BINARY_DIR}
              -P ${CMAKE_SOURCE_DIR}/cmake/import_library.cmake)
  else()
    list(JOIN VEK_EXPORTS "; " names)
    set(script ${CMAKE_BINARY_DIR}/vekm6.map)
    file(CONFIGURE OUTPUT ${script} CONTENT "VEKM6_4 { global: ${names}; local: *; };\n" @ONLY)
    target_link_options(${target} PRIVATE -Wl,--version-script=${script} -Wl,--no-undefined -Wl,-z,relro,-z,now,-z,nodelete
                        -static-libstdc++ -static-libgcc)
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${script})
  endif()
endfunction()
