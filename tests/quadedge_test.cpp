// The quad-edge records: links, operators, errors and the point-versus-edge predicates.
#include "c2subdivision.h"
#include "quadedge.h"
#include "zqexception.h"

#include <gtest/gtest.h>

namespace {

/// Expects f to throw E whose number and text are as given.
template <class E, class F>
void ExpectThrows(F f, int number, const char* text) {
    try {
        f();
        ADD_FAILURE() << "nothing thrown";
    } catch (const E& e) {
        EXPECT_EQ(e.ErrNum(), number);
        EXPECT_EQ(e.Text(), text);
    }
}

/// An edge from (ox, oz) to (dx, dz) in x-z, its points owned by the fixture's test.
struct Segment {
    Segment(double ox, double oz, double dx, double dz) : org(ox, 7.0, oz), dest(dx, -7.0, dz) {
        q[0].EndPoints(&org, &dest);
    }
    C2Edge* Edge() { return &q[0]; }
    SFVec3f org, dest;
    C2QuadEdge q;
};

} // namespace

TEST(QuadEdgeLinks, FreshRecordAndNavigationByIndex) {
    C2QuadEdge q;
    EXPECT_EQ(q[0].Onext(), &q[0]);
    EXPECT_EQ(q[0].Sym(), &q[2]);
    EXPECT_EQ(q[0].Rot()->Onext(), &q[3]);
    EXPECT_EQ(q[0].Lnext(), &q[2]);
    EXPECT_EQ(q[0].Org(), nullptr);
    EXPECT_EQ(q[0].Dest(), nullptr);
    for (short i = 0; i < 4; ++i) {
        EXPECT_EQ(q[i].Rot(), &q[(i + 1) % 4]);
        EXPECT_EQ(q[i].Sym(), &q[(i + 2) % 4]);
        EXPECT_EQ(q[i].invRot(), &q[(i + 3) % 4]);
        EXPECT_EQ(q[i].Qedge(), &q);
    }
    // A stand-alone edge belongs to no record: no siblings rather than stray memory.
    C2Edge alone;
    EXPECT_EQ(alone.Sym(), nullptr);
    EXPECT_EQ(alone.Oprev(), nullptr);
    EXPECT_EQ(alone.Qedge(), nullptr);
}

TEST(QuadEdgeLinks, SpliceIsItsOwnInverse) {
    C2QuadEdge p, q;
    C2Edge::Splice(&p[0], &q[0]);
    EXPECT_EQ(p[0].Onext(), &q[0]);
    EXPECT_EQ(q[0].Onext(), &p[0]);
    EXPECT_EQ(p[1].Onext(), &q[3]);
    C2Edge::Splice(&p[0], &q[0]);
    EXPECT_EQ(p[0].Onext(), &p[0]);
    EXPECT_EQ(q[0].Onext(), &q[0]);
    EXPECT_EQ(p[1].Onext(), &p[3]);
    EXPECT_EQ(p == p, true);
    EXPECT_EQ(p == q, false);
    // A primal edge spliced with its own dual: beta is e0 itself, and every new link must
    // come from the old ones (e1 takes e0's old link).
    C2Edge::Splice(&p[0], &p[1]);
    EXPECT_TRUE(p[0].Onext() == &p[3] && p[1].Onext() == &p[0] && p[3].Onext() == &p[1]);
}

TEST(QuadEdgeErrors, BadIndexAndCopiesThrow) {
    C2QuadEdge q;
    ExpectThrows<CZqMathException>([&] { q[4]; }, 4, "Illegal quad edge index");
    ExpectThrows<CZqMathException>([&] { q[-1]; }, 4, "Illegal quad edge index");
    ExpectThrows<CZqException>([&] { C2QuadEdge copy(q); }, 0, "Not yet implemented");
    C2QuadEdge other;
    ExpectThrows<CZqException>([&] { other = q; }, 0, "Not yet implemented");
}

TEST(QuadEdgeMarks, TimeStampAndCounters) {
    C2QuadEdge q;
    EXPECT_EQ(q.TimeStamp(5), 1);
    EXPECT_EQ(q.TimeStamp(5), 0);
    EXPECT_EQ(q.TimeStamp(6), 1);
    q[1].AddRef();
    EXPECT_TRUE(q[1].Used());
    q.ClearUsed();
    EXPECT_FALSE(q[1].Used());
}

TEST(QuadEdgePredicates, OnEdgeEndsLineAndExtent) {
    Segment s(0, 0, 10, 0);
    // Near an end counts even off the edge's direction.
    EXPECT_EQ(C2Edge::OnEdge(SFVec2f(-5e-7, 5e-7), s.Edge()), 1);
    EXPECT_EQ(C2Edge::OnEdge(SFVec2f(5, 0), s.Edge()), 1);
    EXPECT_EQ(C2Edge::OnEdge(SFVec2f(5, 9e-7), s.Edge()), 1);
    EXPECT_EQ(C2Edge::OnEdge(SFVec2f(5, 2e-6), s.Edge()), 0);
    // On the line but farther from an end than the edge is long.
    EXPECT_EQ(C2Edge::OnEdge(SFVec2f(-0.5, 0), s.Edge()), 0);
    EXPECT_EQ(C2Edge::OnEdge(SFVec2f(10.5, 0), s.Edge()), 0);
    // The sides use x and z, not the heights, and are strict.
    EXPECT_EQ(C2Edge::LeftOf(SFVec2f(5, 1), s.Edge()), 1);
    EXPECT_EQ(C2Edge::RightOf(SFVec2f(5, -1), s.Edge()), 1);
    EXPECT_EQ(C2Edge::LeftOf(SFVec2f(20, 0), s.Edge()), 0);
    EXPECT_EQ(C2Edge::RightOf(SFVec2f(20, 0), s.Edge()), 0);
    EXPECT_EQ(s.Edge()->Dest2d().x, 10.0);
    EXPECT_EQ(s.Edge()->Dest()->y, -7.0);
}

TEST(QuadEdgeOperators, ConnectMarksAndDeleteEdgeRespectsTheList) {
    std::vector<SFVec3f> none;
    C2Subdivision s(&none, {-10, 0, -10}, {10, 0, -10}, {0, 0, 10});
    C2Edge* ea = &(*s.GetEdge(0))[0];
    C2Edge* eb = &(*s.GetEdge(1))[0];
    // Across the triangle from b to b: made from a marked edge, the new one is marked.
    C2Edge* e = C2Edge::Connect(ea, eb);
    EXPECT_EQ(s.NumEdges(), 4);
    EXPECT_TRUE(e->IsBoundaryEdge());
    EXPECT_FALSE(e->Sym()->IsBoundaryEdge());
    C2Subdivision* slot = &s;
    C2Edge* x = C2QuadEdge::MakeEdge(nullptr, &slot);
    C2Edge* inner = C2Edge::Connect(x, C2QuadEdge::MakeEdge(nullptr, &slot));
    EXPECT_FALSE(inner->IsBoundaryEdge());
    EXPECT_EQ(inner->Org(), x->Dest());
    // Deleting through a subdivision that does not hold the record unlinks it only.
    C2Subdivision other(&none, {-10, 0, -10}, {10, 0, -10}, {0, 0, 10});
    C2Subdivision* otherSlot = &other;
    C2Edge::DeleteEdge(inner, &otherSlot);
    EXPECT_EQ(s.NumEdges(), 7);
    EXPECT_EQ(inner->Onext(), inner);
    C2Edge::DeleteEdge(inner, &slot);
    EXPECT_EQ(s.NumEdges(), 6);
    EXPECT_EQ(s.GetEdge(4), x->Qedge());
}
