// double_pair.h: two doubles computed side by side, in one SSE2 register where the target has
// them. Not installed.
#ifndef ZQMATH_DOUBLE_PAIR_H
#define ZQMATH_DOUBLE_PAIR_H

#if defined(__SSE2__) || defined(_M_X64) || (defined(_M_IX86_FP) && _M_IX86_FP >= 2)
#define ZQMATH_PAIR_SSE2 1
#include <emmintrin.h>
#endif

namespace zq::detail {

// Each lane is one IEEE double operation, rounded on its own exactly as the same operation on
// one double: the kernels built on pairs give the bits of their one-at-a-time form.
#if defined(ZQMATH_PAIR_SSE2)

/// Two doubles, lane 0 and lane 1.
struct Pair {
    __m128d v;
};

/// p[0] and p[1] (no alignment needed).
inline Pair Load(const double* p) {
    return Pair{_mm_loadu_pd(p)};
}

/// d in both lanes.
inline Pair Splat(double d) {
    return Pair{_mm_set1_pd(d)};
}

/// Writes lane 0 to p[0] and lane 1 to p[1].
inline void Store(double* p, Pair a) {
    _mm_storeu_pd(p, a.v);
}

/// Lane 0 of a.
inline double Low(Pair a) {
    return _mm_cvtsd_f64(a.v);
}

/// Lane 1 of a.
inline double High(Pair a) {
    return _mm_cvtsd_f64(_mm_unpackhi_pd(a.v, a.v));
}

inline Pair operator+(Pair a, Pair b) {
    return Pair{_mm_add_pd(a.v, b.v)};
}

inline Pair operator-(Pair a, Pair b) {
    return Pair{_mm_sub_pd(a.v, b.v)};
}

inline Pair operator*(Pair a, Pair b) {
    return Pair{_mm_mul_pd(a.v, b.v)};
}

inline Pair operator/(Pair a, Pair b) {
    return Pair{_mm_div_pd(a.v, b.v)};
}

/// (a's lane 0, b's lane 0).
inline Pair Lows(Pair a, Pair b) {
    return Pair{_mm_unpacklo_pd(a.v, b.v)};
}

/// (a's lane 1, b's lane 1).
inline Pair Highs(Pair a, Pair b) {
    return Pair{_mm_unpackhi_pd(a.v, b.v)};
}

/// (a's lane 0, b's lane 1).
inline Pair LowHigh(Pair a, Pair b) {
    return Pair{_mm_move_sd(b.v, a.v)};
}

/// (a's lane 1, b's lane 0).
inline Pair HighLow(Pair a, Pair b) {
    return Pair{_mm_shuffle_pd(a.v, b.v, 1)};
}

/// True when each lane is exactly 0.0 (either sign) or exactly 1.0.
inline bool EachZeroOrOne(Pair a) {
    const __m128d zero = _mm_cmpeq_pd(a.v, _mm_setzero_pd());
    const __m128d one = _mm_cmpeq_pd(a.v, _mm_set1_pd(1.0));
    return _mm_movemask_pd(_mm_or_pd(zero, one)) == 3;
}

/// Per lane: a's where test is exactly 0.0 (either sign; not NaN), else b's. No branch, so
/// values stay in registers.
inline Pair IfZero(Pair test, Pair a, Pair b) {
    const __m128d zero = _mm_cmpeq_pd(test.v, _mm_setzero_pd());
    return Pair{_mm_or_pd(_mm_and_pd(zero, a.v), _mm_andnot_pd(zero, b.v))};
}

#else

struct Pair {
    double lane[2];
};

inline Pair Load(const double* p) {
    return Pair{{p[0], p[1]}};
}

inline Pair Splat(double d) {
    return Pair{{d, d}};
}

inline void Store(double* p, Pair a) {
    p[0] = a.lane[0];
    p[1] = a.lane[1];
}

inline double Low(Pair a) {
    return a.lane[0];
}

inline double High(Pair a) {
    return a.lane[1];
}

inline Pair operator+(Pair a, Pair b) {
    return Pair{{a.lane[0] + b.lane[0], a.lane[1] + b.lane[1]}};
}

inline Pair operator-(Pair a, Pair b) {
    return Pair{{a.lane[0] - b.lane[0], a.lane[1] - b.lane[1]}};
}

inline Pair operator*(Pair a, Pair b) {
    return Pair{{a.lane[0] * b.lane[0], a.lane[1] * b.lane[1]}};
}

inline Pair operator/(Pair a, Pair b) {
    return Pair{{a.lane[0] / b.lane[0], a.lane[1] / b.lane[1]}};
}

inline Pair Lows(Pair a, Pair b) {
    return Pair{{a.lane[0], b.lane[0]}};
}

inline Pair Highs(Pair a, Pair b) {
    return Pair{{a.lane[1], b.lane[1]}};
}

inline Pair LowHigh(Pair a, Pair b) {
    return Pair{{a.lane[0], b.lane[1]}};
}

inline Pair HighLow(Pair a, Pair b) {
    return Pair{{a.lane[1], b.lane[0]}};
}

inline bool EachZeroOrOne(Pair a) {
    return (a.lane[0] == 0.0 || a.lane[0] == 1.0) && (a.lane[1] == 0.0 || a.lane[1] == 1.0);
}

inline Pair IfZero(Pair test, Pair a, Pair b) {
    return Pair{
        {test.lane[0] == 0.0 ? a.lane[0] : b.lane[0], test.lane[1] == 0.0 ? a.lane[1] : b.lane[1]}};
}

#endif

} // namespace zq::detail

#endif
