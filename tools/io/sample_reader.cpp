// sample_reader.cpp: the first bytes choose the reader.
#include "sample_reader.h"

#include "las_reader.h"
#include "ply_reader.h"
#include "text_reader.h"

namespace zq::tool {

SampleFile ReadSamples(const std::string& path, const ProgressHook& progress) {
    InputFile in(path);
    const std::string_view start = in.Peek(5);
    SampleFile file;
    if (IsLas(start)) {
        file.format = "LAS";
        file.samples = ReadLas(in, progress);
    } else if (IsPly(start)) {
        file.format = "PLY";
        file.samples = ReadPly(in, progress);
    } else {
        file.format = "text";
        file.samples = ReadText(in, progress);
    }
    return file;
}

} // namespace zq::tool
