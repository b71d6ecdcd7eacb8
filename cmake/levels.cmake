# The four columns: flags for each level, and one object library a level.

set(rux_levels px m6 a6 w7)

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(rux_plain_flags -march=i586 -mno-mmx -mno-sse -mfpmath=387)
    set(rux_flags_px ${rux_plain_flags})
    set(rux_flags_m6 -march=i586 -mmmx -mno-sse -mfpmath=387)
    set(rux_flags_a6 -march=i686 -msse -mno-sse2 -mfpmath=387)
    set(rux_flags_w7 -march=i686 -mtune=generic -msse2 -mfpmath=sse)   # i686 alone splits unaligned vector loads
    set(rux_stack_flags -mstackrealign)   # a host may call with a stack on a 4-byte boundary only
else()
    set(rux_plain_flags -fno-tree-vectorize -fno-tree-slp-vectorize)
    set(rux_flags_px ${rux_plain_flags})
    set(rux_flags_m6 ${rux_plain_flags})
    set(rux_flags_a6 ${rux_plain_flags})
    set(rux_flags_w7)
    set(rux_stack_flags)
endif()

# No loop becomes a call of memcpy or memset: each level does its own work.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(rux_loop_flags -fno-tree-loop-distribute-patterns)
else()
    set(rux_loop_flags -fno-builtin)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_SIZEOF_VOID_P EQUAL 4)
    list(REMOVE_ITEM rux_flags_px -mfpmath=387)   # what it does anyway without SSE
    list(REMOVE_ITEM rux_flags_m6 -mfpmath=387)
    list(REMOVE_ITEM rux_flags_a6 -mfpmath=387)
    list(REMOVE_ITEM rux_plain_flags -mfpmath=387)
endif()

set(rux_common_flags
    -O2 -ffp-contract=off -fno-strict-aliasing -fwrapv -fno-exceptions -fno-rtti -fvisibility=hidden
    -fno-threadsafe-statics -fno-asynchronous-unwind-tables -fno-stack-protector
    ${rux_loop_flags} ${rux_stack_flags})

# rux_add_library_objects(target flags... SOURCES files...): objects of the library, fit for both its forms.
function(rux_add_library_objects target)
    cmake_parse_arguments(ARG "" "" "FLAGS;SOURCES" ${ARGN})
    add_library(${target} OBJECT ${ARG_SOURCES})
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/include)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:${rux_common_flags};${ARG_FLAGS}>)
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()
