# The library shows its entry point and the class CadvWnd with all its operations, and nothing else.
# cmake -DNM=... -DLIBRARY=... -P CheckExports.cmake
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} -D --defined-only -C ${LIBRARY} OUTPUT_VARIABLE symbols RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "cannot read the symbols of ${LIBRARY}")
endif()

set(operations
  "CadvWnd" "Create" "SubclassDlgItem" "CreateChildren" "InternalRedrawFG" "InternalRedrawBG" "SetBackgroundMode"
  "GetBackgroundMode" "GetBackgroundColor" "SetFlickerFree" "IsFlickerFree" "SetContentsChanged" "IsContentsChanged"
  "ReCreateBitmap" "RegisterClass" "DummyWndProc" "CreateObject" "GetThisClass" "GetRuntimeClass" "GetMessageMap"
  "GetSuperWndProcAddr" "OnPaint" "OnWinIniChange" "OnSize" "OnPaletteChanged" "~CadvWnd")
set(found "")
string(REPLACE ";" " " symbols "${symbols}")
string(REPLACE "\n" ";" symbols "${symbols}")
foreach(line IN LISTS symbols)
  if(line STREQUAL "")
    continue()
  endif()
  # An address, a letter, the name.
  string(REGEX REPLACE "^[0-9a-f]+ [A-Za-z] " "" name "${line}")
  if(name MATCHES "^CadvWnd::(~?[A-Za-z]+)\\(")
    list(APPEND found "${CMAKE_MATCH_1}")
  elseif(name STREQUAL "InitializeMe" OR name MATCHES "^(vtable|typeinfo|typeinfo name) for CadvWnd$")
    list(APPEND found "${name}")
  else()
    message(SEND_ERROR "exported by mistake: ${name}")
  endif()
endforeach()
foreach(name InitializeMe "vtable for CadvWnd" "typeinfo for CadvWnd" "typeinfo name for CadvWnd" ${operations})
  if(NOT name IN_LIST found)
    message(SEND_ERROR "not exported: ${name}")
  endif()
endforeach()
