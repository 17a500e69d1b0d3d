// Complex transforms: in registers, self-sorting or by four steps, whichever the order asks for.
#pragma once

#include "kernels/fft.h"
#include "large.h"
#include "registers.h"
#include "selfsorting.h"
#include "tables.h"

namespace vek::VEK_LEVEL {
namespace {

using kernels::FftData;

template <class T, class In, class Out>
[[gnu::noinline]] void runPasses(Handed<In> from, Handed<Out> to, T* outBuffer, int order, const T* table, T* scratch) {
    const In in = from;
    const Out out = to;
    if (usesFourSteps<T>(order)) return fourSteps<T>(in, out, order, table, scratch);
    T* second = outBuffer != nullptr ? outBuffer : scratch + alignedLength<T>(size_t{2} << order);
    chooseWidth<T>(plans<T>.of[order], in, out, order, {table, scratch, second});
}

// What follows keeps no frame: small transforms are done in less time than it takes to save the registers.
template <class T, class In, class Out>
VEK_INLINE void run(const In& in, const Out& out, T* outBuffer, int order, const T* table, T* scratch) {
    if (!runInRegisters<T>(in, out, order, table)) runPasses<T, In, Out>(in, out, outBuffer, order, table, scratch);
}

template <class T>
void transform(const T* in, T* out, int order, bool inverse, T scale, const T* table, T* scratch) {
    if (inverse)
        run<T>(Pairs<const T, true>{in, 1}, Pairs<T, true>{out, scale}, out, order, table, scratch);
    else
        run<T>(Pairs<const T, false>{in, 1}, Pairs<T, false>{out, 1}, out, order, table, scratch);
}

template <class T>
void transformParts(FftData<const T> in, FftData<T> out, int order, bool inverse, T scale, const T* table, T* scratch) {
    const Arrays<const T> from = inverse ? Arrays<const T>{in.im, in.re, 1} : Arrays<const T>{in.re, in.im, 1};
    const Arrays<T> to = inverse ? Arrays<T>{out.im, out.re, scale} : Arrays<T>{out.re, out.im, static_cast<T>(1)};
    run<T>(from, to, static_cast<T*>(nullptr), order, table, scratch);
}

}   // namespace
}   // namespace vek::VEK_LEVEL
