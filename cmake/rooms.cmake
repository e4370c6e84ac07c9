# What every target of this project is built with, and vantor_room(), which makes one room of src/ a library.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
find_package(PkgConfig REQUIRED)

add_library(vantor_options INTERFACE)
target_include_directories(vantor_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vantor_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Wimplicit-fallthrough
    $<$<BOOL:${VANTOR_WARNINGS_AS_ERRORS}>:-Werror>)
if(VANTOR_SANITIZE)
    target_compile_options(vantor_options INTERFACE -fsanitize=${VANTOR_SANITIZE} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    target_link_options(vantor_options INTERFACE -fsanitize=${VANTOR_SANITIZE})
    # What the platform's libraries leave behind would be blamed on the program.
    target_sources(vantor_options INTERFACE
        $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${PROJECT_SOURCE_DIR}/tests/support/leak_suppressions.cpp>)
endif()
if(VANTOR_HARDENED)
    include(CheckCXXCompilerFlag)
    # Of some processors only.
    check_cxx_compiler_flag(-fcf-protection VANTOR_HAS_CF_PROTECTION)
    target_compile_options(vantor_options INTERFACE -fstack-protector-strong -fstack-clash-protection
        $<$<BOOL:${VANTOR_HAS_CF_PROTECTION}>:-fcf-protection>
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS)
    target_link_options(vantor_options INTERFACE -Wl,-z,relro,-z,now,--as-needed)
endif()
# Wherever the sources of a release lie, the same ones give the same bytes.
target_compile_options(vantor_options INTERFACE $<$<CONFIG:RelWithDebInfo>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
if(CMAKE_CXX_CLANG_TIDY)
    # What is generated is held against one check that it cannot fail; none at all is an error.
    file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/.clang-tidy CONTENT "Checks: '-*,llvm-twine-local'\n" @ONLY)
endif()
if(VANTOR_FUZZ)
    target_compile_options(vantor_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# vantor_room(<name> SOURCES … [PUBLIC <targets>] [PRIVATE <targets>] [PRECOMPILED <headers>])
# The library vantor_<name>. PUBLIC are rooms whose headers stand in this room's headers; PRIVATE is the rest.
function(vantor_room name)
    cmake_parse_arguments(ROOM "" "" "SOURCES;PUBLIC;PRIVATE;PRECOMPILED" ${ARGN})
    string(REPLACE "/" "_" target "vantor_${name}")
    add_library(${target} STATIC ${ROOM_SOURCES})
    target_link_libraries(${target} PUBLIC ${ROOM_PUBLIC} PRIVATE vantor_options ${ROOM_PRIVATE})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    # What the compiler reads once; the innermost room shares what all of them include.
    if(ROOM_PRECOMPILED)
        target_precompile_headers(${target} PRIVATE ${ROOM_PRECOMPILED})
    else()
        target_precompile_headers(${target} REUSE_FROM vantor_base)
    endif()
endfunction()
