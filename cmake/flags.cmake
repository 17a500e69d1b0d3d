# Flags that every object of the library shares, kernels included. No -ffast-math, no flags from the outside that name
# a processor: the levels alone decide which instructions are used.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(VEKM6_WERROR "Take warnings for errors: the presets do, a user's own compiler need not" OFF)
set(VEK_WARNINGS -Wall -Wextra)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  list(APPEND VEK_WARNINGS -Wno-bitwise-instead-of-logical)   # masks are vectors, and bools where there are none
endif()
if(VEKM6_WERROR)
  list(APPEND VEK_WARNINGS -Werror)
endif()

set(VEK_FLAGS -fno-exceptions -fno-rtti -fvisibility=hidden -ffp-contract=off
              -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
if(WIN32)
  # SSE arithmetic, so that results match the other targets. Callers keep the stack 4-byte aligned only, and so does the
  # library among its own functions: those that put vectors on the stack align it for themselves.
  list(APPEND VEK_FLAGS -msse2 -mfpmath=sse -mincoming-stack-boundary=2 -mpreferred-stack-boundary=2)
endif()
if(VEKM6_SANITIZE)
  add_compile_options(-fsanitize=${VEKM6_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Checks by call: straight-line transforms with checks in line would compile for minutes.
    add_compile_options(--param=asan-instrumentation-with-call-threshold=0)
  endif()
  add_link_options(-fsanitize=${VEKM6_SANITIZE})
endif()

function(vek_compile target)
  target_compile_options(${target} PRIVATE ${VEK_FLAGS} ${VEK_WARNINGS} ${ARGN})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR} ${CMAKE_SOURCE_DIR}/include ${CMAKE_SOURCE_DIR}/_SRC)
endfunction()
