// Squares, square roots, absolute values and thresholds of floating-point vectors.
#include "vekm6/vec.h"

#include <cmath>

#include "core/call.h"
#include "core/elements.h"
#include "kernels/level/levels.h"
#include "kernels/vec.h"

namespace {

using vek::core::Call;
using vek::core::isComplex;
using vek::core::Real;
using vek::core::reals;

constexpr const char* module = "vekvec";

// The active level's kernels for elements of type T.
template <class T>
const auto& kernels() {
    return vek::oneOf<vek::kernels::VecOf<Real<T>>>(vek::kernelsNow().vec);
}

// Members 1 work in place, members 2 from src to dst; they differ in the names that their reports give the
// vectors.

template <class T>
bool badVectors(Call& call, T* vec, int len) {
    return call.bad(len <= 0, "len<=0") || call.bad(!vec, "vec==0");
}

template <class T>
bool badVectors(Call& call, const T* src, T* dst, int len) {
    return call.bad(len <= 0, "len<=0") || call.bad(!src, "src==0") || call.bad(!dst, "dst==0");
}

// ---- Squares ------------------------------------------------------------------------------------

template <class T>
VEK_STEPS VekStatus sqr(Call& call, const T* src, T* dst, int len) {
    if (call.stopped()) return VEK_StsOk;
    if constexpr (isComplex<T>)
        return kernels<T>().complexSqr2(reals(src), reals(dst), len);
    else
        return kernels<T>().sqr2(src, dst, len);
}

template <class T>
VekStatus sqr1(const char* name, T* vec, int len) {
    Call call{module, name};
    if (badVectors(call, vec, len)) return call.result;
    return sqr(call, vec, vec, len);
}

template <class T>
VekStatus sqr2(const char* name, const T* src, T* dst, int len) {
    Call call{module, name};
    if (badVectors(call, src, dst, len)) return call.result;
    return sqr(call, src, dst, len);
}

// ---- Square roots -------------------------------------------------------------------------------

template <class T>
VEK_STEPS VekStatus sqrt(Call& call, const T* src, T* dst, int len) {
    if (call.stopped()) return VEK_StsOk;
    if constexpr (isComplex<T>) {
        return kernels<T>().complexSqrt2(reals(src), reals(dst), len);
    } else {
        const bool negativeMet = kernels<T>().sqrt2(src, dst, len);
        call.bad(negativeMet, "Element of input vector is negative");
        return call.result;
    }
}

template <class T>
VekStatus sqrt1(const char* name, T* vec, int len) {
    Call call{module, name};
    if (badVectors(call, vec, len)) return call.result;
    return sqrt(call, vec, vec, len);
}

template <class T>
VekStatus sqrt2(const char* name, const T* src, T* dst, int len) {
    Call call{module, name};
    if (badVectors(call, src, dst, len)) return call.result;
    return sqrt(call, src, dst, len);
}

// ---- Absolute values ----------------------------------------------------------------------------

template <class T>
VekStatus abs1(const char* name, T* vec, int len) {
    Call call{module, name};
    if (badVectors(call, vec, len)) return call.result;
    if (call.stopped()) return VEK_StsOk;
    return kernels<T>().abs2(vec, vec, len);
}

template <class T>
VekStatus abs2(const char* name, const T* src, T* dst, int len) {
    Call call{module, name};
    if (badVectors(call, src, dst, len)) return call.result;
    if (call.stopped()) return VEK_StsOk;
    return kernels<T>().abs2(src, dst, len);
}

// ---- Thresholds: `negative`, the report of a negative threshold, is null where one is welcome ---

// A NaN is not, and raises nothing.
template <class T>
bool isNegative(T limit) {
    return std::isless(limit, T{0});
}

template <class T>
VEK_STEPS VekStatus thresh(Call& call, const T* src, T* dst, int len, Real<T> limit, int relOp, const char* negative) {
    if (negative && call.bad(isNegative(limit), negative)) return call.result;
    if (call.stopped()) return VEK_StsOk;
    const vek::kernels::VecOf<Real<T>>& table = kernels<T>();
    if constexpr (isComplex<T>) {
        const auto kernel = relOp == VEK_LT ? table.complexThreshBelow2 : table.complexThreshAbove2;
        return kernel(reals(src), reals(dst), len, limit);
    } else {
        const auto kernel = relOp == VEK_LT ? table.threshBelow2 : table.threshAbove2;
        return kernel(src, dst, len, limit);
    }
}

template <class T>
VekStatus thresh1(const char* name, T* vec, int len, Real<T> limit, int relOp, const char* negative = nullptr) {
    Call call{module, name};
    if (badVectors(call, vec, len)) return call.result;
    return thresh(call, vec, vec, len, limit, relOp, negative);
}

template <class T>
VekStatus thresh2(const char* name, const T* src, T* dst, int len, Real<T> limit, int relOp,
                  const char* negative = nullptr) {
    Call call{module, name};
    if (badVectors(call, src, dst, len)) return call.result;
    return thresh(call, src, dst, len, limit, relOp, negative);
}

template <class T>
VEK_STEPS VekStatus invThresh(Call& call, const T* src, T* dst, int len, Real<T> limit, const char* negative) {
    if (call.bad(isNegative(limit), negative)) return call.result;
    if (call.stopped()) return VEK_StsOk;
    bool zeroMet = false;
    if constexpr (isComplex<T>)
        zeroMet = kernels<T>().complexInvThresh2(reals(src), reals(dst), len, limit);
    else
        zeroMet = kernels<T>().invThresh2(src, dst, len, limit);
    call.bad(zeroMet, "zero element and zero thresh");
    return call.result;
}

template <class T>
VekStatus invThresh1(const char* name, T* vec, int len, Real<T> limit, const char* negative) {
    Call call{module, name};
    if (badVectors(call, vec, len)) return call.result;
    return invThresh(call, vec, vec, len, limit, negative);
}

template <class T>
VekStatus invThresh2(const char* name, const T* src, T* dst, int len, Real<T> limit, const char* negative) {
    Call call{module, name};
    if (badVectors(call, src, dst, len)) return call.result;
    return invThresh(call, src, dst, len, limit, negative);
}

}   // namespace

extern "C" {

VekStatus VEKAPI veksbSqr1(float* vec, int len) { return sqr1("veksbSqr1", vec, len); }
VekStatus VEKAPI veksbSqr2(const float* src, float* dst, int len) { return sqr2("veksbSqr2", src, dst, len); }
VekStatus VEKAPI veksbSqrt1(float* vec, int len) { return sqrt1("veksbSqrt1", vec, len); }
VekStatus VEKAPI veksbSqrt2(const float* src, float* dst, int len) { return sqrt2("veksbSqrt2", src, dst, len); }
VekStatus VEKAPI veksbThresh1(float* vec, int len, float thresh, int relOp) {
    return thresh1("veksbThresh1", vec, len, thresh, relOp);
}
VekStatus VEKAPI veksbThresh2(const float* src, float* dst, int len, float thresh, int relOp) {
    return thresh2("veksbThresh2", src, dst, len, thresh, relOp);
}
VekStatus VEKAPI veksbInvThresh1(float* vec, int len, float thresh) {
    return invThresh1("veksbInvThresh1", vec, len, thresh, "thresh<0.0f");
}
VekStatus VEKAPI veksbInvThresh2(const float* src, float* dst, int len, float thresh) {
    return invThresh2("veksbInvThresh2", src, dst, len, thresh, "thresh<0.0f");
}

VekStatus VEKAPI vekdbSqr1(double* vec, int len) { return sqr1("vekdbSqr1", vec, len); }
VekStatus VEKAPI vekdbSqr2(const double* src, double* dst, int len) { return sqr2("vekdbSqr2", src, dst, len); }
VekStatus VEKAPI vekdbSqrt1(double* vec, int len) { return sqrt1("vekdbSqrt1", vec, len); }
VekStatus VEKAPI vekdbSqrt2(const double* src, double* dst, int len) { return sqrt2("vekdbSqrt2", src, dst, len); }
VekStatus VEKAPI vekdbThresh1(double* vec, int len, double thresh, int relOp) {
    return thresh1("vekdbThresh1", vec, len, thresh, relOp);
}
VekStatus VEKAPI vekdbThresh2(const double* src, double* dst, int len, double thresh, int relOp) {
    return thresh2("vekdbThresh2", src, dst, len, thresh, relOp);
}
VekStatus VEKAPI vekdbInvThresh1(double* vec, int len, double thresh) {
    return invThresh1("vekdbInvThresh1", vec, len, thresh, "thresh<0.0");
}
VekStatus VEKAPI vekdbInvThresh2(const double* src, double* dst, int len, double thresh) {
    return invThresh2("vekdbInvThresh2", src, dst, len, thresh, "thresh<0.0");
}

VekStatus VEKAPI vekcbSqr1(VekCplx* vec, int len) { return sqr1("vekcbSqr1", vec, len); }
VekStatus VEKAPI vekcbSqr2(const VekCplx* src, VekCplx* dst, int len) { return sqr2("vekcbSqr2", src, dst, len); }
VekStatus VEKAPI vekcbSqrt1(VekCplx* vec, int len) { return sqrt1("vekcbSqrt1", vec, len); }
VekStatus VEKAPI vekcbSqrt2(const VekCplx* src, VekCplx* dst, int len) { return sqrt2("vekcbSqrt2", src, dst, len); }
VekStatus VEKAPI vekcbThresh1(VekCplx* vec, int len, float thresh, int relOp) {
    return thresh1("vekcbThresh1", vec, len, thresh, relOp, "thresh<0.0f");
}
VekStatus VEKAPI vekcbThresh2(const VekCplx* src, VekCplx* dst, int len, float thresh, int relOp) {
    return thresh2("vekcbThresh2", src, dst, len, thresh, relOp, "thresh<0.0f");
}
VekStatus VEKAPI vekcbInvThresh1(VekCplx* vec, int len, float thresh) {
    return invThresh1("vekcbInvThresh1", vec, len, thresh, "thresh<0.0f");
}
VekStatus VEKAPI vekcbInvThresh2(const VekCplx* src, VekCplx* dst, int len, float thresh) {
    return invThresh2("vekcbInvThresh2", src, dst, len, thresh, "thresh<0.0f");
}

VekStatus VEKAPI vekzbSqr1(VekDCplx* vec, int len) { return sqr1("vekzbSqr1", vec, len); }
VekStatus VEKAPI vekzbSqr2(const VekDCplx* src, VekDCplx* dst, int len) { return sqr2("vekzbSqr2", src, dst, len); }
VekStatus VEKAPI vekzbSqrt1(VekDCplx* vec, int len) { return sqrt1("vekzbSqrt1", vec, len); }
VekStatus VEKAPI vekzbSqrt2(const VekDCplx* src, VekDCplx* dst, int len) { return sqrt2("vekzbSqrt2", src, dst, len); }
VekStatus VEKAPI vekzbThresh1(VekDCplx* vec, int len, double thresh, int relOp) {
    return thresh1("vekzbThresh1", vec, len, thresh, relOp, "thresh<0.0");
}
VekStatus VEKAPI vekzbThresh2(const VekDCplx* src, VekDCplx* dst, int len, double thresh, int relOp) {
    return thresh2("vekzbThresh2", src, dst, len, thresh, relOp, "thresh<0.0");
}
VekStatus VEKAPI vekzbInvThresh1(VekDCplx* vec, int len, double thresh) {
    return invThresh1("vekzbInvThresh1", vec, len, thresh, "thresh<0.0");
}
VekStatus VEKAPI vekzbInvThresh2(const VekDCplx* src, VekDCplx* dst, int len, double thresh) {
    return invThresh2("vekzbInvThresh2", src, dst, len, thresh, "thresh<0.0f");
}

VekStatus VEKAPI veksbAbs1(float* vec, int len) { return abs1("veksbAbs1", vec, len); }
VekStatus VEKAPI veksbAbs2(const float* src, float* dst, int len) { return abs2("veksbAbs2", src, dst, len); }

VekStatus VEKAPI vekdbAbs1(double* vec, int len) { return abs1("vekdbAbs1", vec, len); }
VekStatus VEKAPI vekdbAbs2(const double* src, double* dst, int len) { return abs2("vekdbAbs2", src, dst, len); }

}   // extern "C"
