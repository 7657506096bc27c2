// The 3x3 matrix: column-filling constructors, textbook rotations, axis codes.
#include <c3matrix.h>
#include <cquat.h>
#include <sfmatrix.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

void ExpectNear(const C3Matrix& got, const C3Matrix& want, double tolerance) {
    for (long i = 0; i < 9; ++i) {
        EXPECT_NEAR(got[i], want[i], tolerance) << "element " << i;
    }
}

C3Matrix Identity() {
    C3Matrix m;
    m.Identity();
    return m;
}

} // namespace

TEST(C3MatrixLayout, ConstructorsFillColumnsAndProductsTakeBFirst) {
    const C3Matrix m(1, 2, 3, 4, 5, 6, 7, 8, 9);
    EXPECT_TRUE(m[1] == 4.0 && m[3] == 2.0);
    SFVec3f a, b, c;
    m.ExtractBasisVectors(a, b, c);
    EXPECT_TRUE(b == SFVec3f(4, 5, 6));
    // The matrix times a column vector: (1, 0, 0) picks column 0.
    EXPECT_TRUE(m * SFVec3f(1, 0, 0) == SFVec3f(1, 2, 3));
    // B × this: with a column swap B, rows 0 and 1 of this are exchanged.
    const C3Matrix swap(0, 1, 0, 1, 0, 0, 0, 0, 1);
    const C3Matrix product = m * swap;
    EXPECT_EQ(product[0], m[3]);
    C3Matrix* heap = m.MatMul(swap);
    ExpectNear(*heap, product, 0.0);
    delete heap;
    C3Matrix in = m;
    in.MultiplyIn(const_cast<C3Matrix*>(&swap));
    ExpectNear(in, product, 0.0);
    // Transposes: into a new matrix, into another, into itself.
    C3Matrix* fresh = m.Transpose(nullptr);
    EXPECT_EQ((*fresh)[1], 2.0);
    delete fresh;
    C3Matrix self = m;
    EXPECT_EQ(self.Transpose(&self), &self);
    EXPECT_TRUE(self[1] == 2.0 && self[3] == 4.0);
    // To and from the 4x4 matrix, row by row.
    const SFMatrix wide(m);
    EXPECT_TRUE(wide[1] == 4.0 && wide[4] == 2.0 && wide[15] == 1.0);
    SFMatrix copy = wide;
    ExpectNear(C3Matrix(&copy), m, 0.0);
}

TEST(C3MatrixRotations, TextbookFormsAndAxisCodes) {
    const double a = 0.8, b = -0.3, c = 1.9;
    C3Matrix composed = Identity(); // Rz(a)·Ry(b)·Rx(c) from the single-axis turns
    composed.PostRotateX(c);
    composed.PostRotateY(b);
    composed.PostRotateZ(a);
    C3Matrix direct;
    direct.RotationMatrix(a, b, c);
    ExpectNear(direct, composed, 1e-15);
    // The axis-angle constructor takes the axis as given: unit z gives Rz, (0, 0, 2) no rotation.
    C3Matrix rz = Identity();
    rz.PostRotateZ(a);
    ExpectNear(C3Matrix(SFVec3f(0, 0, 1), a), rz, 1e-16);
    EXPECT_NE(C3Matrix(SFVec3f(0, 0, 2), a)[8], 1.0);
    // Codes: 0 turns about y, 1 about x the other way, 2 about z, any other zeroes.
    const C3Matrix start(SFVec3f(0.3, -0.4, 0.5), 1.2);
    C3Matrix byAxis[4] = {start, start, start, C3Matrix()};
    byAxis[0].PostRotateY(a);
    byAxis[1].PostRotateX(-a);
    byAxis[2].PostRotateZ(a);
    for (const int code : {0, 1, 2, 5}) {
        C3Matrix byCode = start;
        byCode.Rotate(a, static_cast<C3Matrix::EAxis>(code));
        ExpectNear(byCode, byAxis[code < 3 ? code : 3], code < 3 ? 1e-15 : 0.0);
    }
    EXPECT_TRUE(start.RecoverHeading() == SFVec3f(0, 0, 0) &&
                start.RecoverAttitude() == SFVec3f(0, 0, 0));
    // The quaternion constructor is the column form of SFMatrix(CQuat*), unguarded.
    CQuat q(0.1, -0.7, 0.2, 0.4);
    const SFMatrix column(&q);
    const C3Matrix fromQuat(&q);
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(fromQuat[i], column[4 * (i / 3) + i % 3]);
    }
    CQuat zero(0, 0, 0, 0);
    EXPECT_TRUE(std::isnan(C3Matrix(&zero)[0]));
}
