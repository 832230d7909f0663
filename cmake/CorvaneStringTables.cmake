# corvane_add_string_tables(TARGET FOLDER LANGUAGE...)
#   Compiles the texts of a module into it. FOLDER/<LANGUAGE>.txt holds one language in UTF-8: a line `NUMBER "text"` for
#   each text, with the escapes of C++, in order of the numbers; a line that begins with # is a comment. All languages have
#   the same numbers.
function(corvane_add_string_tables target folder)
    set(tables "")
    set(list "")
    set(checks "")
    list(GET ARGN 0 first)
    foreach(language IN LISTS ARGN)
        if(NOT language MATCHES "^[a-z]+$")
            message(FATAL_ERROR "${language}: a language has the name of a folder of Lang/, such as english")
        endif()
        corvane_read_string_table(${folder}/${language}.txt entries)
        string(APPEND tables "constexpr StringTableEntry k_${language}[] = {\n${entries}};\n")
        string(APPEND list "    {u\"${language}\", {k_${language}, std::size(k_${language})}},\n")
        string(APPEND checks "static_assert(ascend(k_${language}), \"the numbers in ${language}.txt do not ascend\");\n"
            "static_assert(match(k_${language}, k_${first}),\n"
            "              \"${language}.txt and ${first}.txt have other numbers\");\n")
    endforeach()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_strings.cpp)
    file(CONFIGURE OUTPUT ${source} @ONLY CONTENT [[
#include <algorithm>
#include <functional>
#include <iterator>

#include <corvane/app/ModuleStrings.h>

namespace {

using corvane::StringTableEntry;

constexpr bool ascend(std::span<const StringTableEntry> texts) {
    return std::ranges::adjacent_find(texts, std::ranges::greater_equal(),
                                      &StringTableEntry::number) == texts.end();
}
constexpr bool match(std::span<const StringTableEntry> one,
                     std::span<const StringTableEntry> other) {
    return std::ranges::equal(one, other, {}, &StringTableEntry::number,
                              &StringTableEntry::number);
}

@tables@
@checks@
constexpr corvane::LanguageTable kTables[] = {
@list@};

}  // namespace

const corvane::StringTable& corvane::ModuleStrings() {
    static const StringTable& table = TableOfLanguage(kTables);
    return table;
}
]])
    target_sources(${target} PRIVATE ${source})
    target_compile_definitions(${target} PRIVATE CORVANE_MODULE_HAS_STRINGS)
endfunction()

# The lines of a table as initialisers.
function(corvane_read_string_table file result)
    cmake_path(ABSOLUTE_PATH file)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(READ ${file} text)
    string(PREPEND text "\n")
    string(APPEND text "\n")
    string(REGEX REPLACE "\r" "" text "${text}")
    string(REGEX REPLACE "\n[ \t]*#[^\n]*" "\n" text "${text}")
    # Line ends are doubled, since each line takes the one before it and the one after.
    string(REPLACE "\n" "\n\n" text "${text}")
    set(line "\n[ \t]*([0-9]+)[ \t]+(\"([^\"\\\n]|\\\\[^\n])*\")[ \t]*\n")
    string(REGEX REPLACE "${line}" "" rest "${text}")
    if(rest MATCHES "\n[ \t]*([^ \t\n][^\n]*)")
        message(FATAL_ERROR "${file}: no line NUMBER \"text\": ${CMAKE_MATCH_1}")
    endif()
    string(REGEX REPLACE "${line}" "    {\\1, u\\2},\n" entries "${text}")
    string(REGEX REPLACE "\n+" "\n" entries "${entries}")
    set(${result} "${entries}" PARENT_SCOPE)
endfunction()
