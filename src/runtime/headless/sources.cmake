# In a list of their own: publish-check for Windows compiles them under another namespace.
set(SWIFTPATCH_HEADLESS_SOURCES
    app.cpp
    cabinet.cpp
    clock.cpp
    code_page.cpp
    component.cpp
    consent.cpp
    controls.cpp
    desktop.cpp
    disk.cpp
    events.cpp
    files.cpp
    form.cpp
    inet_transport.cpp
    msgbox.cpp
    network.cpp
    os_version.cpp
    profile.cpp
    system.cpp
    trace.cpp
    user.cpp
    world.cpp
)
list(TRANSFORM SWIFTPATCH_HEADLESS_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
