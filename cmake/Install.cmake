# cmake --install: the host and its tools in <prefix>/lib/vexto with the pane bundle beside them
# (where the host looks for it), commands in <prefix>/bin, the desktop entry and the icon in
# <prefix>/share. Every binary finds the shared runtime relative to itself, in the build tree too:
# the build lays its files out as they are installed, and a build run path that the install would
# rewrite is padded with empty entries, which the loader reads as "the current folder".
include(GNUInstallDirs)

# Installed programs carry no debug information (2 MB instead of 54), unless asked to.
option(VEXTO_INSTALL_DEBUG_INFO "Install binaries with their debug information" OFF)
if(NOT VEXTO_INSTALL_DEBUG_INFO)
    install(CODE "set(CMAKE_INSTALL_DO_STRIP 1)")
endif()
set(VEXTO_HOME ${CMAKE_INSTALL_LIBDIR}/vexto)
set(VEXTO_BUNDLE_HOME ${VEXTO_HOME}/Vexto.prefPane)
set(VEXTO_DAEMON_HOME ${VEXTO_BUNDLE_HOME}/Contents/Resources/vextodaemon.app)

install(TARGETS vexto_runtime LIBRARY DESTINATION ${VEXTO_HOME}/lib)
set_target_properties(vexto-desktop vexto-bus PROPERTIES INSTALL_RPATH "$ORIGIN"
                                                     BUILD_WITH_INSTALL_RPATH ON)
install(TARGETS vexto-desktop vexto-bus LIBRARY DESTINATION ${VEXTO_HOME}/lib)

set(host_programs vexto-prefs vexto-plist)
if(VEXTO_BUILD_QT)
    list(APPEND host_programs vexto-prefs-qt)
endif()
set_target_properties(${host_programs} PROPERTIES INSTALL_RPATH "$ORIGIN/lib" BUILD_WITH_INSTALL_RPATH ON)
install(TARGETS ${host_programs} RUNTIME DESTINATION ${VEXTO_HOME} LIBRARY DESTINATION ${VEXTO_HOME})

set_target_properties(vexto_pane_module PROPERTIES INSTALL_RPATH "$ORIGIN/../../../lib"
                                                   BUILD_WITH_INSTALL_RPATH ON)
install(TARGETS vexto_pane_module LIBRARY DESTINATION ${VEXTO_BUNDLE_HOME}/Contents/Linux)
install(FILES ${VEXTO_PANE_BUNDLE}/Contents/Info.plist DESTINATION ${VEXTO_BUNDLE_HOME}/Contents)
# The resources as built (strings, help, defaults, presets, images), without the daemon's
# binaries, which are installed as targets below.
install(DIRECTORY ${VEXTO_PANE_BUNDLE}/Contents/Resources DESTINATION ${VEXTO_BUNDLE_HOME}/Contents
        PATTERN "vextodaemon.app/Contents/Linux" EXCLUDE)

set(daemon_programs vextodaemon)
if(VEXTO_BUILD_QT)
    list(APPEND daemon_programs vextodaemon-qt)
endif()
set_target_properties(${daemon_programs} PROPERTIES INSTALL_RPATH "$ORIGIN/../../../../../../lib"
                                                    BUILD_WITH_INSTALL_RPATH ON)
install(TARGETS ${daemon_programs} RUNTIME DESTINATION ${VEXTO_DAEMON_HOME}/Contents/Linux
        LIBRARY DESTINATION ${VEXTO_DAEMON_HOME}/Contents/Linux)

foreach(command vexto-prefs vexto-plist)
    install(CODE "
        file(MAKE_DIRECTORY \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        file(CREATE_LINK ../${VEXTO_HOME}/${command}
             \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/${command}\" SYMBOLIC)")
endforeach()

# The desktop entry names the program by its installed path, so that it starts from a prefix
# outside PATH too; the prefix is known only when installing (cmake --install --prefix).
install(CODE "
    file(READ \"${PROJECT_SOURCE_DIR}/resources/app.vexto.Preferences.desktop.in\" entry)
    string(REPLACE @VEXTO_PREFS_PATH@ \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/vexto-prefs\"
           entry \"\${entry}\")
    set(folder \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/applications\")
    file(MAKE_DIRECTORY \"\${folder}\")
    message(STATUS \"Installing: \${folder}/app.vexto.Preferences.desktop\")
    file(WRITE \"\${folder}/app.vexto.Preferences.desktop\" \"\${entry}\")")
if(VEXTO_BUILD_QT)
    install(FILES ${VEXTO_PANE_BUNDLE}/Contents/Resources/Vexto.png
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps RENAME vexto.png)
endif()
