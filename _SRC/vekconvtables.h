// What the choice of a method of convolution goes by: lengths up to which direct sums are taken, and costs of
// transforms.
//
// Some rows are settled behaviour and stand as they are: all of float's crossovers, the first four and last three of
// the other types', and the costs of the orders 2, 7, 12 ... 32. Between them crossovers follow a power law, costs go
// by a constant factor from order to order; orders 0 and 1 continue the factor of those after them. bench/tune_conv
// measures what is not settled, and writes this file with it.
#pragma once

#include "vekm6/types.h"

namespace vek::conv {

// Direct sums are taken below `always` short elements, and from there below `limit` while the longer operand is shorter
// than longBelow[shorter - always].
template <class X, class H>
struct Crossover;
template <>
struct Crossover<float, float> {
    static constexpr int always = 9;
    static constexpr int limit = 111;
    static constexpr int32_t longBelow[limit - always] = {
        53243, 52732, 40444, 43004, 32764, 33788, 31740, 27679, 27695, 30254, 25235, 24176, 25243, 27273, 25224,
        21170, 17138, 17180, 13254, 13511, 10438, 10501, 10627, 12234, 10376, 6324,  2580,  2345,  1849,  2029,
        1781,  1588,  1365,  1376,  1162,  1327,  1390,  1261,  1095,  1094,  1060,  897,   881,   999,   984,
        852,   812,   809,   779,   774,   758,   611,   783,   628,   414,   623,   593,   641,   384,   389,
        176,   176,   172,   169,   165,   164,   161,   161,   157,   156,   152,   152,   146,   150,   150,
        149,   140,   141,   138,   139,   136,   135,   130,   129,   129,   129,   127,   125,   123,   124,
        123,   122,   123,   122,   119,   119,   117,   116,   115,   114,   111,   111};
};
template <>
struct Crossover<VekCplx, VekCplx> {
    static constexpr int always = 5;
    static constexpr int limit = 49;
    static constexpr int32_t longBelow[limit - always] = {
        31705, 29684, 18000, 13261, 9143, 6556, 4852, 3687, 2864, 2266, 1823, 1487, 1228, 1025, 864,
        735,   630,   544,   473,   413,  363,  321,  285,  254,  227,  204,  184,  167,  151,  138,
        126,   115,   105,   97,    89,   82,   76,   71,   66,   61,   57,   53,   50,   50};
};
template <>
struct Crossover<VekCplx, float> {
    static constexpr int always = 5;
    static constexpr int limit = 99;
    static constexpr int32_t longBelow[limit - always] = {
        61684, 70133, 25077, 26096, 20074, 15875, 12839, 10577, 8850, 7503, 6434, 5573, 4869, 4287, 3800, 3390,
        3041,  2742,  2483,  2259,  2062,  1890,  1737,  1602,  1482, 1374, 1277, 1190, 1111, 1040, 975,  915,
        861,   812,   766,   724,   685,   649,   616,   585,   557,  530,  505,  482,  461,  440,  421,  404,
        387,   371,   356,   342,   329,   316,   305,   293,   283,  273,  263,  254,  246,  237,  229,  222,
        215,   208,   202,   195,   190,   184,   178,   173,   168,  164,  159,  155,  150,  146,  142,  139,
        135,   132,   128,   125,   122,   119,   116,   113,   111,  108,  105,  103,  103,  102};
};
template <>
struct Crossover<float, VekCplx> {
    static constexpr int always = 7;
    static constexpr int limit = 99;
    static constexpr int32_t longBelow[limit - always] = {
        36388, 30770, 22629, 21690, 17291, 14058, 11621, 9743, 8269, 7092, 6140, 5359, 4713, 4171, 3714, 3325,
        2992,  2704,  2454,  2235,  2043,  1874,  1724,  1590, 1471, 1364, 1268, 1181, 1102, 1031, 966,  906,
        852,   802,   756,   714,   675,   640,   606,   575,  547,  520,  495,  472,  450,  430,  411,  393,
        376,   360,   346,   332,   318,   306,   294,   283,  272,  262,  253,  244,  235,  227,  219,  212,
        205,   198,   192,   186,   180,   174,   169,   164,  159,  154,  150,  145,  141,  137,  134,  130,
        126,   123,   120,   117,   114,   111,   108,   105,  103,  100,  100,  99};
};
template <>
struct Crossover<double, double> {
    static constexpr int always = 5;
    static constexpr int limit = 109;
    static constexpr int32_t longBelow[limit - always] = {
        44034, 32866, 20578, 20428, 16106, 13021, 10742, 9012, 7668, 6603, 5744, 5043, 4462, 3976, 3565,
        3214,  2913,  2652,  2424,  2225,  2049,  1893,  1754, 1630, 1518, 1418, 1327, 1245, 1170, 1102,
        1039,  981,   929,   880,   835,   793,   755,   719,  686,  655,  626,  598,  573,  549,  527,
        506,   486,   467,   450,   433,   417,   402,   388,  375,  362,  350,  339,  328,  317,  307,
        298,   289,   280,   272,   264,   256,   249,   242,  236,  229,  223,  217,  212,  206,  201,
        196,   191,   186,   182,   178,   173,   169,   165,  162,  158,  154,  151,  148,  145,  141,
        138,   136,   133,   130,   127,   125,   122,   120,  118,  115,  113,  111,  109,  109};
};
template <>
struct Crossover<VekDCplx, VekDCplx> {
    static constexpr int always = 3;
    static constexpr int limit = 60;
    static constexpr int32_t longBelow[limit - always] = {
        12801, 10795, 6699, 6701, 4868, 3691, 2891, 2324, 1907, 1593, 1349, 1157, 1003, 877, 774, 687, 614, 552, 499,
        453,   413,   379,  348,  321,  297,  275,  256,  238,  223,  208,  196,  184,  173, 163, 154, 146, 138, 131,
        125,   119,   113,  108,  103,  98,   94,   90,   86,   83,   79,   76,   73,   70,  68,  65,  63,  62,  61};
};
template <>
struct Crossover<VekDCplx, double> {
    static constexpr int always = 3;
    static constexpr int limit = 107;
    static constexpr int32_t longBelow[limit - always] = {
        16482, 15718, 9915, 10053, 7892, 6399, 5318, 4507, 3881, 3385, 2985, 2657, 2385, 2155, 1959, 1791, 1645, 1518,
        1406,  1307,  1219, 1140,  1069, 1005, 947,  895,  847,  803,  763,  726,  691,  660,  630,  603,  578,  554,
        532,   511,   492,  473,   456,  440,  425,  410,  397,  384,  372,  360,  349,  339,  329,  319,  310,  301,
        293,   285,   278,  270,   263,  257,  250,  244,  238,  233,  227,  222,  217,  212,  208,  203,  199,  195,
        190,   187,   183,  179,   176,  172,  169,  166,  162,  159,  156,  154,  151,  148,  146,  143,  141,  138,
        136,   134,   131,  129,   127,  125,  123,  121,  119,  118,  116,  114,  111,  108};
};
template <>
struct Crossover<double, VekDCplx> {
    static constexpr int always = 3;
    static constexpr int limit = 111;
    static constexpr int32_t longBelow[limit - always] = {
        17759, 16804, 11961, 12635, 9820, 7894, 6511, 5481, 4690, 4068, 3569, 3162, 2825, 2542, 2302, 2096, 1919, 1765,
        1629,  1510,  1404,  1310,  1225, 1149, 1080, 1018, 961,  909,  862,  818,  778,  741,  707,  675,  645,  618,
        592,   568,   546,   525,   505,  486,  469,  452,  436,  422,  408,  394,  382,  370,  359,  348,  338,  328,
        318,   309,   301,   293,   285,  278,  270,  263,  257,  251,  244,  239,  233,  228,  222,  217,  212,  208,
        203,   199,   195,   191,   187,  183,  179,  176,  172,  169,  166,  163,  159,  157,  154,  151,  148,  146,
        143,   141,   138,   136,   134,  131,  129,  127,  125,  123,  121,  119,  117,  115,  114,  112,  111,  111};
};

// By order of the transform: of one forward transform; of a product of spectra and the inverse transform after it.
inline constexpr int costOrders = 33;
template <class T>
struct Cost;
template <>
struct Cost<float> {
    static constexpr float forward[costOrders] = {
        4.761e-07F, 8.386e-07F, 1.477e-06F, 2.602e-06F, 4.582e-06F, 8.071e-06F, 1.422e-05F, 2.504e-05F, 5.728e-05F,
        0.000131F,  0.0002997F, 0.0006855F, 0.001568F,  0.004234F,  0.01143F,   0.03088F,   0.08339F,   0.2252F,
        0.6515F,    1.885F,     5.452F,     15.77F,     45.63F,     132.0F,     381.9F,     1105.0F,    3197.0F,
        9248.0F,    2.675e+04F, 7.74e+04F,  2.239e+05F, 6.478e+05F, 1.874e+06F};
    static constexpr float productAndInverse[costOrders] = {
        6.819e-07F, 1.176e-06F, 2.029e-06F, 3.5e-06F,   6.038e-06F, 1.041e-05F, 1.797e-05F, 3.099e-05F, 6.912e-05F,
        0.0001542F, 0.0003439F, 0.0007671F, 0.001711F,  0.004324F,  0.01093F,   0.02761F,   0.06977F,   0.1763F,
        0.51F,      1.475F,     4.268F,     12.35F,     35.72F,     103.3F,     299.0F,     864.9F,     2502.0F,
        7239.0F,    2.094e+04F, 6.059e+04F, 1.753e+05F, 5.071e+05F, 1.467e+06F};
};
template <>
struct Cost<VekCplx> {
    static constexpr float forward[costOrders] = {
        2.71e-07F,  5.46e-07F,  1.1e-06F,  2.216e-06F, 4.464e-06F, 8.994e-06F, 1.812e-05F, 3.65e-05F, 9.03e-05F,
        0.0002234F, 0.0005526F, 0.001367F, 0.003382F,  0.008776F,  0.02277F,   0.05909F,   0.1533F,   0.3979F,
        0.874F,     1.92F,      4.216F,    9.261F,     20.34F,     44.67F,     98.1F,      215.4F,    473.1F,
        1039.0F,    2282.0F,    5013.0F,   1.101e+04F, 2.419e+04F, 5.313e+04F};
    static constexpr float productAndInverse[costOrders] = {
        5.931e-07F, 1.123e-06F, 2.126e-06F, 4.025e-06F, 7.621e-06F, 1.443e-05F, 2.732e-05F, 5.173e-05F, 0.0001156F,
        0.0002583F, 0.0005771F, 0.001289F,  0.002881F,  0.007446F,  0.01925F,   0.04974F,   0.1286F,    0.3323F,
        0.7299F,    1.603F,     3.522F,     7.735F,     16.99F,     37.31F,     81.95F,     180.0F,     395.3F,
        868.2F,     1907.0F,    4188.0F,    9199.0F,    2.021e+04F, 4.438e+04F};
};
template <>
struct Cost<double> {
    static constexpr double forward[costOrders] = {
        2.932e-07, 5.875e-07, 1.177e-06, 2.358e-06, 4.724e-06, 9.465e-06, 1.896e-05, 3.799e-05, 9.274e-05,
        0.0002264, 0.0005526, 0.001349,  0.003293,  0.009199,  0.0257,    0.07179,   0.2005,    0.5602,
        1.341,     3.21,      7.683,     18.39,     44.02,     105.4,     252.2,     603.7,     1445.0,
        3459.0,    8280.0,    1.982e+04, 4.744e+04, 1.136e+05, 2.718e+05};
    static constexpr double productAndInverse[costOrders] = {
        6.04e-07,  1.154e-06, 2.203e-06, 4.207e-06, 8.035e-06, 1.534e-05, 2.93e-05, 5.596e-05, 0.0001365,
        0.0003331, 0.0008125, 0.001982,  0.004836,  0.01348,   0.0376,    0.1048,   0.2924,    0.8152,
        1.951,     4.671,     11.18,     26.76,     64.06,     153.3,     367.0,    878.5,     2103.0,
        5033.0,    1.205e+04, 2.884e+04, 6.903e+04, 1.652e+05, 3.955e+05};
};
template <>
struct Cost<VekDCplx> {
    static constexpr double forward[costOrders] = {
        4.891e-07, 8.571e-07, 1.502e-06, 2.632e-06, 4.612e-06, 8.083e-06, 1.416e-05, 2.482e-05, 5.914e-05,
        0.0001409, 0.0003357, 0.0007999, 0.001906,  0.006183,  0.02006,   0.06507,   0.2111,    0.6847,
        2.236,     7.303,     23.85,     77.9,      254.4,     830.8,     2713.0,    8861.0,    2.894e+04,
        9.451e+04, 3.087e+05, 1.008e+06, 3.292e+06, 1.075e+07, 3.511e+07};
    static constexpr double productAndInverse[costOrders] = {
        6.773e-07, 1.17e-06,  2.021e-06, 3.491e-06, 6.03e-06,  1.042e-05, 1.799e-05, 3.108e-05, 7.327e-05,
        0.0001727, 0.0004072, 0.0009599, 0.002263,  0.007078,  0.02214,   0.06925,   0.2166,    0.6775,
        2.213,     7.226,     23.6,      77.07,     251.7,     822.0,     2685.0,    8767.0,    2.863e+04,
        9.351e+04, 3.054e+05, 9.973e+05, 3.257e+06, 1.064e+07, 3.474e+07};
};

}   // namespace vek::conv
