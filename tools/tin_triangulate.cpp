// tin_triangulate.cpp: the enclosing triangle and the subdivision's constructor.
#include "tin_triangulate.h"

#include <algorithm>

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

    if (progress) {
        progress(0, samples.size());
    }
    Triangulation t;
    // The constructor only reads the samples.
    t.subdivision =
        std::make_unique<C2Subdivision>(const_cast<std::vector<SFVec3f>*>(&samples), a, b, c);
    t.inserted = t.subdivision->GetVertexCount() - 3;
    t.dropped = samples.size() - t.inserted;
    if (progress) {
        progress(samples.size(), samples.size());
    }
    return t;
}

} // namespace zq::tool
