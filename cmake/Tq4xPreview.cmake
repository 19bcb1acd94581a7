# Whether the program gets the page of "export --preview": TQ4X_HAS_PREVIEW, and node as TQ4X_NODE.
option(TQ4X_PREVIEW "Put the page of \"export --preview\" into the program, if web/node_modules is there" ON)

set(TQ4X_HAS_PREVIEW OFF)
if(TQ4X_PREVIEW AND WIN32)
    message(STATUS "No \"export --preview\": it needs the reader of written files")
elseif(TQ4X_PREVIEW)
    find_program(TQ4X_NODE node)
    # A glob, so that the build configures itself anew when the packages come or go.
    file(GLOB installed CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/web/node_modules/.package-lock.json")
    if(TQ4X_NODE AND installed)
        set(TQ4X_HAS_PREVIEW ON)
    elseif(NOT TQ4X_NODE)
        message(STATUS "No \"export --preview\": node is not installed (tools/setup build installs it)")
    else()
        message(STATUS "No \"export --preview\": web/node_modules is not there (tools/setup build installs it)")
    endif()
endif()
