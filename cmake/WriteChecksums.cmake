# Runs at the end of the installation of an add-on: SHA256SUMS tells the sums of all that lies in it, as
# `sha256sum --check` reads them.
if(NOT CMAKE_INSTALL_COMPONENT STREQUAL "addon")
    return() # a folder that others may use too
endif()
set(root "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
file(GLOB_RECURSE files RELATIVE "${root}" "${root}/*")
list(REMOVE_ITEM files SHA256SUMS)
list(SORT files)
set(lines "")
foreach(name IN LISTS files)
    file(SHA256 "${root}/${name}" sum)
    string(APPEND lines "${sum}  ${name}\n")
endforeach()
file(WRITE "${root}/SHA256SUMS" "${lines}")
