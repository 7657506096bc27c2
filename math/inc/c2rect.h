// c2rect.h: the 2D rectangle of three definitions and the implicit 2D line.
#ifndef ZQMATH_C2RECT_H
#define ZQMATH_C2RECT_H

#include "sfvec2f.h"
#include "zqexport.h"
#include "zqplatform.h"

/// An axis-aligned rectangle in double precision, held as two points a and b whose meaning
/// depends on its definition kind. y grows downward: the top-left corner has the smaller
/// coordinates. A kind other than 0, 1, 2 is stored as given; its corners read as (0, 0).
class ZQMATH_API C2Rect {
public:
    /// How a and b are read.
    enum K2RectDefinition : int {
        kTopLeftBottomRight = 0, ///< a the top-left corner, b the bottom-right corner
        kTopLeftSize = 1,        ///< a the top-left corner, b the size (width, height)
        kCenterSize = 2          ///< a the centre, b the size (width, height)
    };

    /// a = b = (0, 0), kind 0.
    C2Rect();
    /// Stores a, b and k as given: no ordering, no check.
    C2Rect(SFVec2f& a, SFVec2f& b, C2Rect::K2RectDefinition k);
    C2Rect(double ax, double ay, double bx, double by, C2Rect::K2RectDefinition k);
    /// a = (left, top), b = (right, bottom), kind 0.
    C2Rect(CRect r);
    C2Rect(const C2Rect& r);
    /// Copies; returns nothing, as callers have always had it.
    void operator=(const C2Rect& r);

    /// Kind 0: a; kind 1: a; kind 2: a - b / 2.
    SFVec2f GetTopLeft() const;
    /// Kind 0: b; kind 1: a + b; kind 2: a + b / 2.
    SFVec2f GetBottomRight() const;
    /// Kind 0: (a + b) / 2; kind 1: b / 2, the corner deliberately not added; kind 2: a.
    SFVec2f GetCenter() const;
    /// Kind 0: b - a; kinds 1 and 2: b.
    SFVec2f GetSize() const;
    /// b.x - a.x for kind 0; b.x for every other kind, unknown kinds included.
    double GetWidth() const;
    /// b.y - a.y for kind 0; b.y for every other kind, unknown kinds included.
    double GetHeight() const;

    /// Inclusive on every side, between GetTopLeft() and GetBottomRight().
    bool Contains(const SFVec2f& p) const;
    /// a += d; b moves too for kind 0 only (for kinds 1 and 2 it is a size).
    void Translate(SFVec2f d);
    /// Both a points and both b points closer than 1e-5, and the same kind.
    bool operator==(C2Rect r) const;
    bool operator!=(C2Rect r) const;
    /// Enlarges toward p by the kind's own rules, which for kinds 1 and 2 need not make the
    /// rectangle enclose p (kept: callers depend on them).
    void GrowToInclude(const SFVec2f& p);

private:
    SFVec2f m_a;
    SFVec2f m_b;
    K2RectDefinition m_definition;
};

/// A 2D line a*x + b*y + c = 0; built from two distinct points, (a, b) is a unit normal and
/// Eval is the signed distance from the line.
class ZQMATH_API C2LineEq {
public:
    /// All coefficients 0: the line is meant to be assigned before use.
    C2LineEq();
    /// The line through p and q; coincident points give IEEE infinities or NaN.
    C2LineEq(const SFVec2f& p, const SFVec2f& q);
    C2LineEq(const C2LineEq& l) = default;
    C2LineEq& operator=(const C2LineEq& l) = default;

    /// a * p.x + b * p.y + c.
    double Eval(const SFVec2f& p) const;
    /// -1 for a NaN evaluation, otherwise 0: the tolerance is infinite on purpose, so every
    /// finite value classifies as on the line. Callers that need the side use Eval.
    int Classify(const SFVec2f& p) const;

private:
    double m_a;
    double m_b;
    double m_c;
};

#endif
