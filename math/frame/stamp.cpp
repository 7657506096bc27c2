// The release stamp: product, branch, version, build and the build's date and change stamp.
#include "stamp.h"

#include "mmmstd.h"

#include <cstdio>

namespace zq::detail {

void FormatStamp(char* buffer) {
    std::snprintf(buffer, kStampSize, MMM_STAMP_FORMAT, MMM_PRODUCT, MMM_PRODUCT, MMM_BRANCH,
                  MMM_VERSION, static_cast<unsigned>(MMM_BUILD), MMM_HEADER_PATH, MMM_REVISION,
                  MMM_BUILD_DATE, MMM_BUILD_TIME, MMM_TOUCH);
}

} // namespace zq::detail
