# SPDX-License-Identifier: Apache-2.0
# Writes the desktop entry and the session bus's service file for the prefix that is installed to.
set(VELLORY_PROGRAM "${CMAKE_INSTALL_PREFIX}/${libexec}/vellory/vellory")
set(VELLORY_EXEC "${VELLORY_PROGRAM}")
# Some openers take quotes for a part of the name, so they stand only where they must.
if(VELLORY_EXEC MATCHES "[^A-Za-z0-9/._+%-]")
    string(REGEX REPLACE "([\"`$\\\\])" "\\\\\\1" VELLORY_EXEC "${VELLORY_EXEC}")
    set(VELLORY_EXEC "\"${VELLORY_EXEC}\"")
endif()
# In entries "%" begins a field, and a backslash is written twice.
string(REPLACE "%" "%%" VELLORY_ENTRY_EXEC "${VELLORY_EXEC}")
string(REPLACE "\\" "\\\\" VELLORY_ENTRY_EXEC "${VELLORY_ENTRY_EXEC}")
set(data "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${share}")
foreach(entry applications/com.quorvel.vellory.desktop dbus-1/services/com.quorvel.vellory.service)
    get_filename_component(name "${entry}" NAME)
    message(STATUS "Installing: ${data}/${entry}")
    configure_file("${packaging}/${name}.in" "${data}/${entry}" @ONLY)
endforeach()
