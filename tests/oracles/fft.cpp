#include "tests/support/oracle.h"

namespace test {

namespace {

// ---- Arrays as complex numbers --------------------------------------------------------------------------------------

// The layouts of half spectra.
enum class Layout {
    ccs,
    rcPack,
    rcPerm
};

// Where the parts of bin k stand, and no position (-1) for an imaginary part that is zero and not kept.
struct Position {
    int re, im;
};
Position position(Layout layout, int order, int k) {
    const int n = 1 << order;
    const int m = n / 2;
    if (k == 0) return {0, layout == Layout::ccs ? 1 : -1};
    if (k == m && layout == Layout::ccs) return {n, n + 1};
    if (k == m) return {layout == Layout::rcPack ? n - 1 : 1, -1};
    const int re = layout == Layout::rcPack ? 2 * k - 1 : 2 * k;
    return {re, re + 1};
}

Layout layoutOf(int flags, int pack, int perm) {
    return (flags & pack) != 0 ? Layout::rcPack : (flags & perm) != 0 ? Layout::rcPerm : Layout::ccs;
}

std::vector<Wide> half(const std::vector<Wide>& reals, Layout layout, int order) {
    std::vector<Wide> bins((std::size_t{1} << order) / 2 + 1);
    for (std::size_t k = 0; k < bins.size(); ++k) {
        const Position at = position(layout, order, static_cast<int>(k));
        const bool isReal = k == 0 || 2 * k == std::size_t{1} << order;
        bins[k] = {reals[static_cast<std::size_t>(at.re)].re, isReal ? 0 : reals[static_cast<std::size_t>(at.im)].re};
    }
    return bins;
}
std::vector<Wide> laidOut(const std::vector<Wide>& bins, Layout layout, int order) {
    // Of one sample, CCS keeps two positions.
    std::vector<Wide> reals(layout != Layout::ccs ? std::size_t{1} << order
                            : order == 0          ? 2
                                                  : (std::size_t{1} << order) + 2);
    for (std::size_t k = 0; k < (std::size_t{1} << order) / 2 + 1; ++k) {
        const Position at = position(layout, order, static_cast<int>(k));
        reals[static_cast<std::size_t>(at.re)] = {bins[k].re, 0};
        if (at.im >= 0) reals[static_cast<std::size_t>(at.im)] = {bins[k].im, 0};
    }
    return reals;
}

// ---- Transforms -----------------------------------------------------------------------------------------------------

std::vector<Wide> transformed(const std::vector<Wide>& x, int flags) {
    std::vector<Wide> y = referenceFft(x, (flags & VEK_Forw) != 0 ? -1 : 1);
    const bool scales = (flags & VEK_Inv) != 0 && (flags & VEK_NoScale) == 0;
    const long double scale = scales ? 1.0L / static_cast<long double>(x.size()) : 1.0L;
    for (Wide& value : y) value = {value.re * scale, value.im * scale};
    return y;
}

std::vector<Wide> reversed(const std::vector<Wide>& x, int order) {
    std::vector<Wide> y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) y[i] = x[reversedBits(i, order)];
    return y;
}

void wantWhole(Sight& call, const std::string& result, const std::vector<Wide>& values) {
    Wanted& wanted = call.wanted[result];
    wanted.whole = values;
    wanted.order = call.number("order");
}

Part zero() {
    Part part = Exact{0};
    part.others = {-Exact{0}};
    return part;
}

// The names of arrays: operands are read in the order of the arguments.
void complexTransform(Sight& call) {
    const int flags = call.number("flags");
    const int order = call.number("order");
    const bool apart = call.operands.size() == 2;   // real and imaginary parts
    std::vector<Wide> x = call.wide(call.operands[0].c_str());
    if (apart) {
        const std::vector<Wide> im = call.wide(call.operands[1].c_str());
        for (std::size_t i = 0; i < x.size(); ++i) x[i].im = im[i].re;
    }
    if ((flags & VEK_InBitRev) != 0) x = reversed(x, order);
    std::vector<Wide> y = transformed(x, flags);
    if ((flags & VEK_OutBitRev) != 0) y = reversed(y, order);
    if (!apart) return wantWhole(call, call.results[0], y);
    std::vector<Wide> re, im;
    long double powerRe = 0, powerIm = 0;
    for (const Wide& value : y) {
        re.push_back({value.re, 0});
        im.push_back({value.im, 0});
        powerRe += value.re * value.re;
        powerIm += value.im * value.im;
    }
    wantWhole(call, call.results[0], re);
    wantWhole(call, call.results[1], im);
    call.wanted[call.results[0]].power = call.wanted[call.results[1]].power = powerRe + powerIm;
}

void signalToSpectrum(Sight& call) {
    const int order = call.number("order");
    const int flags = call.number("flags");
    const bool packs = call.row.function.operation.find("Fftl") != std::string::npos;
    const Layout layout = packs ? layoutOf(flags, VEK_OutRCPack, VEK_OutRCPerm) : Layout::ccs;
    for (std::size_t i = 0; i < call.results.size(); ++i) {
        std::vector<Wide> x = call.wide(call.operands[i].c_str());
        x.resize(std::size_t{1} << order);
        wantWhole(call, call.results[i], laidOut(transformed(x, flags), layout, order));
        if (layout != Layout::ccs) continue;
        std::vector<Expected>& elements = call.wanted[call.results[i]].elements;   // zeros that are kept
        elements.assign(x.size() + 2, anything());
        elements[1].re = elements[x.size() > 1 ? x.size() + 1 : 1].re = zero();
    }
}

void spectrumToSignal(Sight& call) {
    const int order = call.number("order");
    const int flags = call.number("flags");
    const std::size_t n = std::size_t{1} << order;
    const bool packs = call.row.function.operation.find("Fftl") != std::string::npos;
    const Layout layout = packs ? layoutOf(flags, VEK_InRCPack, VEK_InRCPerm) : Layout::ccs;
    for (std::size_t i = 0; i < call.results.size(); ++i) {
        std::vector<Wide> bins = half(call.wide(call.operands[i].c_str()), layout, order);
        bins.resize(n);
        for (std::size_t k = n / 2 + 1; k < n; ++k) bins[k] = conj(bins[n - k]);
        wantWhole(call, call.results[i], transformed(bins, flags));
    }
}

// Bin by bin, within an epsilon of the product's size.
void packedProduct(Sight& call) {
    const int order = call.number("order");
    const Layout layout =
        call.row.function.operation.find("Pack") != std::string::npos ? Layout::rcPack : Layout::rcPerm;
    const std::vector<Wide> a = half(call.wide(call.operands[0].c_str()), layout, order);
    const std::vector<Wide> b = half(call.wide(call.operands[1].c_str()), layout, order);
    std::vector<Expected>& elements = call.wanted[call.results[0]].elements;
    elements.resize(std::size_t{1} << order);
    for (std::size_t k = 0; k < a.size(); ++k) {
        const Wide product = a[k] * b[k];
        const Position at = position(layout, order, static_cast<int>(k));
        const Exact within = call.real.epsilon * std::hypot(a[k].re, a[k].im) * std::hypot(b[k].re, b[k].im);
        elements[static_cast<std::size_t>(at.re)].re = {Part::near, product.re, within};
        if (at.im >= 0) elements[static_cast<std::size_t>(at.im)].re = {Part::near, product.im, within};
    }
}

}   // namespace

VEK_ORACLES(fft) {
    const bool ordinaryOnly = true;
    whole("Fft FftNip rFft rFftNip", "c z", complexTransform, ordinaryOnly);
    whole("RealFft RealFftNip RealFftl RealFftlNip Real2Fft Real2FftNip", "s d", signalToSpectrum, ordinaryOnly);
    whole("CcsFft CcsFftNip CcsFftl CcsFftlNip Ccs2Fft Ccs2FftNip", "s d", spectrumToSignal, ordinaryOnly);
    whole("MpyRCPack2 MpyRCPack3 MpyRCPerm2 MpyRCPerm3", "s d", packedProduct, ordinaryOnly);
}

}   // namespace test
