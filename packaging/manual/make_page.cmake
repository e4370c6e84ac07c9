# Makes the web page PAGE of the Markdown file SOURCE, in the LANGUAGE it is written in, with the program CMARK.
# cmark gives headings no anchors; here they get those that links within the sources use.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${CMARK} --to html --unsafe --extension table ${SOURCE} OUTPUT_VARIABLE body
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "<h[1-6]>[^\n]*</h[1-6]>" headings "${body}")
foreach(heading IN LISTS headings)
    string(REGEX REPLACE "<[^>]*>" "" text "${heading}")
    if(NOT DEFINED title)
        set(title "${text}")
    endif()
    string(TOLOWER "${text}" anchor)
    string(REPLACE " " "-" anchor "${anchor}")
    string(REGEX REPLACE "[^a-z0-9_-]" "" anchor "${anchor}")
    string(REGEX REPLACE "^<(h[1-6])>" "<\\1 id=\"${anchor}\">" anchored "${heading}")
    string(REPLACE "${heading}" "${anchored}" body "${body}")
endforeach()
string(REGEX REPLACE "href=\"([a-z-]+)\\.md" "href=\"\\1.html" body "${body}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/page.html.in ${PAGE} @ONLY)
