// tin_triangulate.cpp: the enclosing triangle and the spatially ordered build.
#include "tin_triangulate.h"

#include <algorithm>
#include <array>

namespace zq::tool {

C3RRegion Bounds(const std::vector<SFVec3f>& samples) {
    C3RRegion box(samples.front(), samples.front());
    for (const SFVec3f& p : samples) {
        box.ExtendTo(p);
    }
    return box;
}

Triangulation Triangulate(const std::vector<SFVec3f>& samples, const ProgressHook& progress) {
    const C3RRegion box = Bounds(samples);
    const SFVec3f centre = box.GetCenter();
    const SFVec3f size = box.GetSize();
    // Half the side of the square around the samples in x-z, at least one unit so that a
    // single sample or a row of samples still gets a proper triangle.
    const double h = std::max(0.5 * std::max(size.x, size.z), 1.0);
    // The triangle (-6h, -2h), (6h, -2h), (0, 4h) about the centre holds that square with a
    // margin of at least h on every side; its corners run counter-clockwise in x-z.
    const SFVec3f a(centre.x - 6.0 * h, centre.y, centre.z - 2.0 * h);
    const SFVec3f b(centre.x + 6.0 * h, centre.y, centre.z - 2.0 * h);
    const SFVec3f c(centre.x, centre.y, centre.z + 4.0 * h);

    C2SubdivisionOptions options;
    options.corners = std::array<SFVec3f, 3>{a, b, c};
    options.progress = progress;
    C2SubdivisionBuild built = C2Subdivision::Build(samples, options);
    Triangulation t;
    // A copy of a subdivision shares its records: this one outlives the build result.
    t.subdivision = std::make_unique<C2Subdivision>(built.subdivision);
    t.inserted = built.kept;
    t.duplicates = built.duplicates;
    t.rejected = built.rejected;
    return t;
}

} // namespace zq::tool
