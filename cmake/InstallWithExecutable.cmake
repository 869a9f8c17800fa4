# Installs a template that names the installed `velto`, with @VELTO_EXECUTABLE@ put in. It is
# written at install time, so the path is the one of the prefix actually installed into: cpack
# installs into a prefix of its own.
#   velto_install_with_executable(TEMPLATE DESTINATION NAME [QUOTED] [PROGRAM])
# QUOTED puts the path in double quotes; PROGRAM marks the installed file executable.
function(velto_install_with_executable template destination name)
    cmake_parse_arguments(PARSE_ARGV 3 arg "QUOTED;PROGRAM" "" "")
    set(path "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/velto")
    if(arg_QUOTED)
        set(path "\\\"${path}\\\"")
    endif()
    set(permissions OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    if(arg_PROGRAM)
        list(APPEND permissions OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
    endif()
    get_filename_component(template "${template}" ABSOLUTE)
    install(CODE "
        set(VELTO_EXECUTABLE \"${path}\")
        set(target \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${destination}/${name}\")
        message(STATUS \"Installing: \${target}\")
        configure_file(\"${template}\" \"\${target}\" @ONLY FILE_PERMISSIONS ${permissions})
    ")
endfunction()
