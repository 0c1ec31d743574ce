# Names for what the program would otherwise call by a bare number or string. Made again whenever a
# table changes; a header is touched only when its own content does.
#
# resources/strings/x.txt   -> texts/x.h             namespace text: each text's number
# resources/schema, table   -> columns/<table>.h     namespace <table in lower case>: column names

function(write_names header comment namespace lines)
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/${header} @ONLY CONTENT
"// ${comment} Generated: edit the table, not this file.
#pragma once

#include <string_view>

namespace ${namespace}
{
${lines}} // namespace ${namespace}
")
endfunction()

# Names for every text of every table; a duplicate number or name ends the configuration.
function(generate_text_names)
    file(GLOB tables CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/strings/*.txt)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tables})
    set(taken)
    foreach(table ${tables})
        file(STRINGS ${table} heads REGEX "^[0-9]" ENCODING UTF-8)
        set(lines)
        foreach(head ${heads})
            if(head MATCHES "^[0-9]+$")
                continue() # nothing calls it yet
            elseif(NOT head MATCHES "^([0-9]+) ([A-Z][A-Za-z0-9]*)$")
                message(FATAL_ERROR "${table}: \"${head}\" is not a number and a name")
            endif()
            string(TOLOWER ${CMAKE_MATCH_2} folded)
            if(${CMAKE_MATCH_1} IN_LIST taken OR ${folded} IN_LIST taken)
                message(FATAL_ERROR "${table}: ${head} stands twice")
            endif()
            list(APPEND taken ${CMAKE_MATCH_1} ${folded})
            string(APPEND lines "inline constexpr int ${CMAKE_MATCH_2} = ${CMAKE_MATCH_1};\n")
        endforeach()
        get_filename_component(stem ${table} NAME_WE)
        write_names(texts/${stem}.h "Numbers of the texts in resources/strings/${stem}.txt."
            text "${lines}")
    endforeach()
endfunction()

# The columns of one table of resources/schema/<database>.txt.
function(generate_column_names database table namespace)
    set(schema ${CMAKE_SOURCE_DIR}/resources/schema/${database}.txt)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${schema})
    file(STRINGS ${schema} rows REGEX "^(table|    [A-Za-z])" ENCODING UTF-8)
    set(inside FALSE)
    set(lines)
    foreach(row ${rows})
        if(row MATCHES "^table (.*)$")
            set(inside FALSE)
            if(CMAKE_MATCH_1 STREQUAL table)
                set(inside TRUE)
            endif()
        elseif(inside AND row MATCHES "^    ([A-Za-z0-9_]+) [A-Z]")
            string(APPEND lines
                "inline constexpr std::string_view ${CMAKE_MATCH_1} = \"${CMAKE_MATCH_1}\";\n")
        endif()
    endforeach()
    string(TOLOWER ${table} stem)
    write_names(columns/${stem}.h "Columns of the table ${table}." ${namespace} "${lines}")
endfunction()
