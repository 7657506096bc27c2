// sample_reader.h: samples from a file of any format the tool reads, told apart by content.
#ifndef ZQMATH_TOOLS_IO_SAMPLE_READER_H
#define ZQMATH_TOOLS_IO_SAMPLE_READER_H

#include "progress.h"

#include <sfvec3f.h>

#include <string>
#include <vector>

namespace zq::tool {

/// Samples and the name of the format they were read from.
struct SampleFile {
    std::vector<SFVec3f> samples;
    const char* format = "";
};

/// The samples (x, y, z as the file has them) of the file at path, or of standard input for
/// "-": LAS when it starts with "LASF", PLY when it starts with the line "ply", text otherwise.
/// Throws ToolError.
SampleFile ReadSamples(const std::string& path, const ProgressHook& progress);

} // namespace zq::tool

#endif
