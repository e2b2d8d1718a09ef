# What makes faults in builds that are shipped hard to use: stacks that are guarded, copies and containers that
# know their bounds, and tables of functions that cannot be changed once the program runs.
function(veltra_harden target)
    if(CMAKE_CXX_FLAGS MATCHES "-fsanitize" OR NOT VELTRA_HARDENED)
        return()
    endif()
    set(options -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS
        -fstack-protector-strong -fstack-clash-protection)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
        list(APPEND options -fcf-protection=full)
    endif()
    set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
    target_compile_options(${target} PRIVATE "$<${optimised}:${options}>")
    target_link_options(${target} PRIVATE
        "$<${optimised}:LINKER:-z,relro,-z,now,-z,noexecstack>")
endfunction()

# What every target of this project is compiled with. Call it once for each target.
function(veltra_target target)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        POSITION_INDEPENDENT_CODE ON
        CXX_EXTENSIONS OFF
        UNITY_BUILD_CODE_BEFORE_INCLUDE "// NOLINTNEXTLINE(bugprone-suspicious-include)")
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_options(${target} PRIVATE
        # Log records name a source file from the top of the tree, wherever it is built.
        "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
        # Where all sources of a library are compiled as one, a name may shadow another source's.
        -Wall -Wextra -Wpedantic $<$<NOT:$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wshadow> -Wconversion
        -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wold-style-cast
        -Wimplicit-fallthrough -Wundef
        # A designated initialiser that leaves members at their defaults does so on purpose.
        -Wno-missing-field-initializers
        # At -O3 GCC 12 wrongly warns of overlapping and endless copies where texts are put together
        # (its bugs 105651 and 105329), and of uninitialised memory where a short text is moved.
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict -Wno-maybe-uninitialized
        -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds>
        $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op -Wuseless-cast>
        $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>
        $<$<BOOL:${VELTRA_WARNINGS_AS_ERRORS}>:-Werror>)
    veltra_harden(${target})
endfunction()

# A library that other threads may still use while the process exits: nothing that it holds for the
# whole process is destroyed, and its code stays where it is when it is unloaded.
function(veltra_lasting_library target)
    target_compile_options(${target} PRIVATE
        $<$<CXX_COMPILER_ID:Clang>:-Wexit-time-destructors>)
    target_link_options(${target} PRIVATE LINKER:-z,nodelete)
endfunction()
