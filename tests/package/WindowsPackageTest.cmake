# Packs version VERSION from the Windows build tree BUILD of the checkout SOURCE, unpacks it elsewhere, in a folder with
# a blank, and uses it from there under wine.
set(work "${BUILD}/package test")
file(REMOVE_RECURSE "${work}")
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

run(${CMAKE_CPACK_COMMAND} --config "${BUILD}/CPackConfig.cmake" -B "${work}/packages")

file(ARCHIVE_EXTRACT INPUT "${work}/packages/TQ4X_ForPennonExport-${VERSION}-addon.zip" DESTINATION "${work}/addon")
expect_files("${work}/addon"
    "Application/Plugins/TQ4X_ForPennonExport.dll;Application/Plugins/xsi.dll;License.txt;ReadMe.txt;SHA256SUMS")
run(${CMAKE_COMMAND} -E chdir "${work}/addon" sha256sum --check --strict SHA256SUMS)
string(REGEX MATCHALL ": OK\n" matches "${output}\n")
list(LENGTH matches count)
if(NOT count EQUAL 4)
    message(FATAL_ERROR "SHA256SUMS does not tell of all four files:\n${output}")
endif()

file(ARCHIVE_EXTRACT INPUT "${work}/packages/tq4x-${VERSION}-Windows.zip" DESTINATION "${work}/program")
expect_files("${work}/program"
    "CHANGELOG.md;LICENSE;README.md;bin/tq4x.exe;bin/xsi.dll;lib/tq4x/NoToolStarter.exe;lib/tq4x/TQ4X_ForPennonExport.dll")
set(ENV{XDG_DATA_HOME} "${work}/data")
run("${SOURCE}/tools/wine" "${work}/program/bin/tq4x.exe" export "${SOURCE}/examples/lighthouse/lighthouse.glb"
    -o "${work}/out" -n lighthouse)
if(NOT EXISTS "${work}/out/lighthouse.qmdl")
    message(FATAL_ERROR "No model was written:\n${output}")
endif()
