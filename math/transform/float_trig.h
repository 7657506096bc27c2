// float_trig.h: single-precision trigonometry, each value the double result rounded to float.
#ifndef ZQMATH_FLOAT_TRIG_H
#define ZQMATH_FLOAT_TRIG_H

#include "zqexport.h"

namespace zq::detail {

/// static_cast<float>(std::sin(double(v))), the same bits on every input, cheaper where
/// |v| <= pi/2.
float Sin(float v);
/// Sin(a) and Sin(b), side by side. Exported for the tests.
ZQMATH_API void Sines(float a, float b, float& sinA, float& sinB);
/// static_cast<float>(std::cos(double(v))).
float Cos(float v);
/// static_cast<float>(std::acos(double(v))).
float Acos(float v);
/// static_cast<float>(std::atan2(double(y), double(x))).
float Atan2(float y, float x);

} // namespace zq::detail

#endif
