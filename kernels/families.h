// The one list of the kernels' families: a line makes the declarations of every level, the entries of the levels and
// the members of `Kernels`, and brings the table under the tests.
#pragma once

// X(object, Table): kernels/<object>.cpp defines vek::<level>::<object>, a `Table`. The object's name up to an
// underscore is the family's; its interface, which defines `Table` in vek::kernels, is kernels/<family>.h. A family
// comes as several objects where one would take long to compile.
#define VEK_FAMILIES(X)    \
    X(arith, ArithTable)   \
    X(aritw, AritwTable)   \
    X(vec, VecTable)       \
    X(dotp, DotpTable)     \
    X(corr, CorrTable)     \
    X(misc, MiscTable)     \
    X(dft, DftTable)       \
    X(goertz, GoertzTable) \
    X(fft_s, FftFloats)    \
    X(fft_d, FftDoubles)   \
    X(conv_s, ConvFloats)  \
    X(conv_d, ConvDoubles) \
    X(conv_w, ConvShortsTable)
