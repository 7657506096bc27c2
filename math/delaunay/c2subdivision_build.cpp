// C2Subdivision::Build: the flat triangulation of the samples, turned into quad-edge records.
#include "c2subdivision.h"

#include "delaunay/flat_build.h"
#include "delaunay/quadedge_assembly.h"

#include <future>
#include <memory>

namespace {

/// Smaller builds stay on the caller's thread: starting another costs more than it saves.
constexpr std::size_t kSmallestThreadedBuild = 4096;

} // namespace

C2SubdivisionBuild C2Subdivision::Build(const SFVec3f* samples, std::size_t count,
                                        const C2SubdivisionOptions& options) {
    using zq::detail::QuadEdgeAssembly;
    const bool helped = options.threads > 1;
    std::unique_ptr<QuadEdgeAssembly> assembly;
    std::future<void> made;
    // Asked for a second thread, the build makes the records, and maps the assembly's other
    // memory, there while the sites go in: fresh memory costs a page fault per page, and those
    // faults then overlap the insertions.
    const auto started = [&](std::size_t sites) {
        assembly = std::make_unique<QuadEdgeAssembly>(sites, helped);
        if (helped && sites >= kSmallestThreadedBuild) {
            made = std::async(std::launch::async | std::launch::deferred,
                              [&assembly] { assembly->Prepare(); });
        }
    };
    zq::detail::FlatBuild b = zq::detail::BuildFlat(samples, count, options, started);
    C2SubdivisionBuild result{C2Subdivision(nullptr, b.corners[0], b.corners[1], b.corners[2]),
                              b.kept.size(), b.duplicates, b.rejected};
    std::vector<double> heights;
    heights.reserve(b.order.size());
    for (std::uint32_t k : b.order) {
        heights.push_back(samples[b.kept[k]].y);
    }
    assembly->Prepare();
    if (made.valid()) {
        made.get();
    }
    assembly->Assemble(result.subdivision, *b.flat, b.corners, heights, b.order);
    return result;
}

C2SubdivisionBuild C2Subdivision::Build(const std::vector<SFVec3f>& samples,
                                        const C2SubdivisionOptions& options) {
    return Build(samples.data(), samples.size(), options);
}
