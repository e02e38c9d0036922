# Checks what the built library shows to others: its adapters, its converters and registrate, nothing of its internals,
# and no libraries but its neighbours, Qt Core and the language's own.
#
# cmake -DLIBRARY=<file> -DNM=<nm> -DREADELF=<readelf> -P exports.cmake

cmake_minimum_required(VERSION 3.25)

function(run_tool output)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "\n" ";" lines "${text}")
    set(${output} "${lines}" PARENT_SCOPE)
endfunction()

set(class "tov::devices::service::Sdk[A-Za-z0-9]+")
set(allowed "((non-virtual thunk to )?${class}::|tov::devices::service::(servicecontrols::registrate|fromSdkFrequencyPlan|toSdkFrequencyPlan)\\()|(typeinfo|vtable) for ${class}(::Observer)?$")

run_tool(symbols "${NM}" --dynamic --demangle --defined-only "${LIBRARY}")
set(functions "")
set(adapters "")
foreach(line IN LISTS symbols)
    string(REGEX REPLACE "^[0-9a-f]* +[A-Za-z] +" "" symbol "${line}")
    if(symbol STREQUAL "")
        continue()
    endif()
    if(NOT symbol MATCHES "^(${allowed})" OR symbol MATCHES "${class}::[A-Za-z0-9]+::")
        message(SEND_ERROR "Exported though internal: ${symbol}")
    endif()
    if(symbol MATCHES "::(registrate|fromSdkFrequencyPlan|toSdkFrequencyPlan)\\(")
        list(APPEND functions "${CMAKE_MATCH_1}")
    elseif(symbol MATCHES "^${class}")
        list(APPEND adapters "${CMAKE_MATCH_0}")
    endif()
endforeach()
list(REMOVE_DUPLICATES adapters)

list(SORT functions)
if(NOT functions STREQUAL "fromSdkFrequencyPlan;registrate;toSdkFrequencyPlan")
    message(SEND_ERROR "Exported functions are: ${functions}")
endif()
foreach(adapter IN ITEMS
        SdkCalibrationControlHandle SdkCalibrationControlWatcher SdkFactoryCorrectionControl SdkFileMemoryControl
        SdkKz515PowerControl SdkKz515SynthesisControl SdkLoLeakageControl SdkMemoryOperationsControl SdkMemoryUsbId
        SdkPotentiometersControl SdkSerialNumberControl SdkSystemTermsControl SdkTemperatureControl SdkUlkPowerControl
        SdkUlkSynthesisControl SdkWn0807PowerControl SdkWn0807SynthesisControl SdkYqFactoryPowerCalibrationControl
        SdkYqIfswCalibrationControl SdkYqSynthesisControl)
    if(NOT "tov::devices::service::${adapter}" IN_LIST adapters)
        message(SEND_ERROR "Not exported: ${adapter}")
    endif()
endforeach()

run_tool(dynamic "${READELF}" --dynamic --wide "${LIBRARY}")
foreach(line IN LISTS dynamic)
    if(line MATCHES "NEEDED"
            AND NOT line MATCHES "(libDevices|libQt6Core|libstdc\\+\\+|libgcc_s|libc|libm|lib(asan|ubsan|tsan)|ld-linux-x86-64)\\.so")
        message(SEND_ERROR "Needs more than it may: ${line}")
    endif()
endforeach()
