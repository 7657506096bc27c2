// stamp.h: formatting of the release stamp.
#ifndef ZQMATH_STAMP_H
#define ZQMATH_STAMP_H

#include <cstddef>

namespace zq::detail {

/// The size of a stamp buffer.
constexpr std::size_t kStampSize = 256;

/// Writes the release stamp into buffer, which holds kStampSize chars.
void FormatStamp(char* buffer);

} // namespace zq::detail

#endif
