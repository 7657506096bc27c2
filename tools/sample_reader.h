// sample_reader.h: height samples read from text, one "x y z" per line.
#ifndef ZQMATH_TOOLS_SAMPLE_READER_H
#define ZQMATH_TOOLS_SAMPLE_READER_H

#include <sfvec3f.h>

#include <string>
#include <string_view>
#include <vector>

namespace zq::tool {

/// The samples of text: three finite numbers a line, separated by blanks or commas; '#' starts
/// a comment and blank lines are skipped. Throws InputError naming source and the line.
std::vector<SFVec3f> ParseSamples(std::string_view text, const std::string& source);
/// The samples of the file at path, or of standard input when path is "-".
std::vector<SFVec3f> ReadSamples(const std::string& path);

} // namespace zq::tool

#endif
