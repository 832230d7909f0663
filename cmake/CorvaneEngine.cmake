# corvane_install_engine(NAME TYPE_LIBRARY file GUID guid [TARGET target | SCRIPT file])
#   An engine of the installation, in lib/engines: its type library and, beside it, the module or the Lua file of the
#   same stem. It is registered in registry/<NAME>.reg, which comes and goes with its package, by a path from the library's
#   folder, so that the tree can move.
function(corvane_install_engine name)
    cmake_parse_arguments(arg "" "TARGET;SCRIPT;TYPE_LIBRARY;GUID" "" ${ARGN})
    set(folder ${CMAKE_LIBRARY_OUTPUT_DIRECTORY}/engines)
    configure_file(${arg_TYPE_LIBRARY} ${folder}/${name}.tlb COPYONLY)
    install(FILES ${arg_TYPE_LIBRARY} DESTINATION ${CMAKE_INSTALL_LIBDIR}/engines)
    if(arg_TARGET)
        set_target_properties(${arg_TARGET} PROPERTIES PREFIX "" OUTPUT_NAME ${name} LIBRARY_OUTPUT_DIRECTORY ${folder})
        install(TARGETS ${arg_TARGET} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/engines)
    else()
        configure_file(${arg_SCRIPT} ${folder}/${name}.lua COPYONLY)
        install(FILES ${arg_SCRIPT} DESTINATION ${CMAKE_INSTALL_LIBDIR}/engines)
    endif()
    set(registration ${PROJECT_BINARY_DIR}/registry/${name}.reg)
    file(CONFIGURE OUTPUT ${registration} CONTENT "Windows Registry Editor Version 5.00\n
[HKEY_CLASSES_ROOT\\TypeLib\\{${arg_GUID}}\\1.0\\0\\win64]\n@=\"engines/${name}.tlb\"\n")
    install(FILES ${registration} DESTINATION registry)
endfunction()
