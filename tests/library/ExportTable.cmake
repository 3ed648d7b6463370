# SPDX-License-Identifier: Zlib
# What an engine can reach in the Windows DLL: the names of its export table, read with objdump
# and demangled, must be the two manufacture functions and what catching the library's exception
# by type needs. A host catches Zenk::MissingInstance by its type's name, which MinGW compares as
# text, so nothing of it is exported.
#   cmake -DOBJDUMP=<objdump> -DCXXFILT=<c++filt> -DDLL=<libwindow.dll> -P ExportTable.cmake
execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE table RESULT_VARIABLE failed)
if(failed)
    message(FATAL_ERROR "${OBJDUMP} -p ${DLL} failed")
endif()
# The names follow "[Ordinal/Name Pointer] Table", one a line ("[   5] <name>"), up to a blank
# line.
# Square brackets would keep a CMake list from splitting: each line becomes its name alone first.
set(header "[Ordinal/Name Pointer] Table\n")
string(FIND "${table}" "${header}" start)
if(start EQUAL -1)
    message(FATAL_ERROR "${DLL} has no export table")
endif()
string(LENGTH "${header}" length)
math(EXPR start "${start} + ${length}")
string(SUBSTRING "${table}" ${start} -1 table)
string(FIND "${table}" "\n\n" end)
string(SUBSTRING "${table}" 0 ${end} table)
string(REGEX REPLACE "[\t ]*\\[ *[0-9]+\\] ([^\n]+)\n?" "\\1;" mangled "${table}")
execute_process(COMMAND ${CXXFILT} ${mangled} OUTPUT_VARIABLE names)
string(STRIP "${names}" names)
string(REPLACE "\n" ";" names "${names}")
list(REMOVE_DUPLICATES names) # constructors and destructors have several entry points each
list(SORT names)

set(expected
    "Window::ManufactureWindowFactory()"
    "Window::ManufactureInputCollector()"
    "typeinfo for Common::ApplicationErrorException"
    "vtable for Common::ApplicationErrorException"
    # What a catch by value needs: the copy is destroyed, and asked for its message.
    "Common::ApplicationErrorException::~ApplicationErrorException()"
    "Common::ApplicationErrorException::what() const"
    # Windows exports every member of an exported class: the constructor cannot stay inside.
    "Common::ApplicationErrorException::ApplicationErrorException(std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> > const&)")
list(SORT expected)

if(NOT names STREQUAL expected)
    set(extra ${names})
    list(REMOVE_ITEM extra ${expected})
    set(missing ${expected})
    list(REMOVE_ITEM missing ${names})
    list(JOIN extra "\n  " extra)
    list(JOIN missing "\n  " missing)
    message(FATAL_ERROR "${DLL} exports more or less than it should.\n"
                        "Exported but not expected:\n  ${extra}\n"
                        "Expected but not exported:\n  ${missing}")
endif()
message(STATUS "${DLL} exports exactly what is expected")
