// text_reader.h: samples from text, one "x y z" a line.
#ifndef ZQMATH_TOOLS_IO_TEXT_READER_H
#define ZQMATH_TOOLS_IO_TEXT_READER_H

#include "input_file.h"
#include "progress.h"

#include <sfvec3f.h>

#include <vector>

namespace zq::tool {

/// The samples of text: a line holds fields separated by blanks or commas, '#' starts a comment
/// and blank lines are skipped. When the first line with fields has no number in it, it names
/// the columns: those named x, y and z (any case, quotes allowed) are read and every line has
/// as many fields; a header of three other names reads the three columns in order. Without a
/// header, a line is the three numbers x y z. Numbers are finite doubles. Throws InputError
/// naming the line.
std::vector<SFVec3f> ReadText(InputFile& in, const ProgressHook& progress);

} // namespace zq::tool

#endif
