# One object library per level, from the same sources, with the level's own flags.
#
# The loops are written over vectors by hand; the compiler's own joining of neighbouring scalar operations only makes
# the scalar remainders slower.
set(VEK_KERNEL_FLAGS -O3 -fno-tree-slp-vectorize)
if(VEKM6_SANITIZE)
  # For the same reason: checks of indices, shifts, overflow and conversions; what they say of pointers the sanitizer of
  # memory says too, at two thirds of the time.
  set(VEK_KERNEL_FLAGS -O1 -fno-tree-slp-vectorize
                       -fno-sanitize=alignment,null,object-size,pointer-overflow)
endif()

if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # It would divide by the zeros that a kernel has put ones in place of: the quotient is not used, but raises.
  list(APPEND VEK_KERNEL_FLAGS -ffp-exception-behavior=maytrap)
endif()

if(CMAKE_SYSTEM_PROCESSOR MATCHES "i.86" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Eight registers: instructions ordered before registers are given out, so that fewer values wait in memory.
  list(APPEND VEK_KERNEL_FLAGS -fschedule-insns -fsched-pressure)
endif()

set(VEK_FLAGS_portable "")
set(VEK_FLAGS_sse2 -msse2)
set(VEK_FLAGS_avx2 -mavx2 -mfma)
set(VEK_FLAGS_avx512 -mavx512f -mavx512bw -mavx512dq -mavx512vl -mavx2 -mfma -mprefer-vector-width=512)

if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  set(VEK_LEVELS portable sse2 avx2 avx512)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "i.86")
  set(VEK_LEVELS portable sse2 avx2)
else()
  set(VEK_LEVELS portable)
endif()

set(VEK_LEVEL_DEFINITIONS "")
foreach(level IN LISTS VEK_LEVELS)
  string(TOUPPER ${level} upper)
  list(APPEND VEK_LEVEL_DEFINITIONS VEK_HAVE_${upper}=1)
endforeach()

function(vek_levels)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/kernels/*.cpp)
  foreach(level IN LISTS VEK_LEVELS)
    add_library(vek_${level} OBJECT ${sources})
    vek_compile(vek_${level} ${VEK_KERNEL_FLAGS} ${VEK_FLAGS_${level}})
    target_compile_definitions(vek_${level} PRIVATE VEK_LEVEL=${level})
  endforeach()
endfunction()
