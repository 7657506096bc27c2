// mmmstd.h: the release stamp of this build, shared by the whole product.
// The values are fixed constants so that two builds of one release are identical.
#ifndef ZQMATH_MMMSTD_H
#define ZQMATH_MMMSTD_H

#define MMM_PRODUCT "NOX"
#define MMM_BRANCH "MOOR"
#define MMM_VERSION "3.2"
#define MMM_BUILD 173
#define MMM_HEADER_PATH "\\cs\\math\\inc\\mmmstd"
#define MMM_REVISION "$Revision: 36 $"
#define MMM_BUILD_DATE "Oct 11 2001"
#define MMM_BUILD_TIME "13:10:01"
#define MMM_TOUCH "Thu Oct 11 13:09:24 2001"

// The first line ends in a line feed and the others in carriage return plus line feed:
// readers of the stamp split on exactly this mix.
#define MMM_STAMP_FORMAT "RELEASE %s:%s:%s:%s(%04x)\n%s %s\r\nBUILT %s@%s\r\nTOUCH %s\r\n"

// The package version: release and build number.
#define ZQMATH_VERSION_MAJOR 3
#define ZQMATH_VERSION_MINOR 2
#define ZQMATH_VERSION_PATCH MMM_BUILD
#define ZQMATH_VERSION_STRING "3.2.173"

#endif
