// mesh_args.h: the command line of `zqmath mesh`.
#ifndef ZQMATH_TOOLS_MESH_MESH_ARGS_H
#define ZQMATH_TOOLS_MESH_MESH_ARGS_H

#include "heightmap_mesher.h"

#include <string>
#include <vector>

namespace zq::tool {

/// What `zqmath mesh` was asked to do.
struct MeshOptions {
    bool help = false;
    /// Empty for the built-in sample map.
    std::string input;
    MeshLimits limits;
    /// The height of the full range in pixels; 0 for a tenth of the map's larger side.
    double zscale = 0.0;
    /// The thickness of the STL's solid base under height 0; 0 for none.
    double base = 0.0;
    /// Output paths; empty when that file is not wanted.
    std::string stl;
    std::string obj;
    std::string ply;
    std::string svg;
};

/// The options of the arguments after "mesh": [HEIGHTMAP] [--error E] [--triangles N]
/// [--vertices N] [--zscale Z] [--base B] [--stl|--obj|--ply|--svg OUT], "--name=value" also
/// accepted. Throws UsageError on an unknown option or a value out of its range.
MeshOptions ParseMeshArguments(const std::vector<std::string>& args);

} // namespace zq::tool

#endif
