#include <xsi_math.h>
#include <xsi_rotation.h>
#include <xsi_transformation.h>

#include <cmath>
#include <random>

namespace tq4x::test
{
namespace
{

using namespace XSI::MATH;

constexpr double Tight = 1e-12;

CRotation Degrees(double x, double y, double z, CRotation::RotationOrder order = CRotation::siXYZ)
{
    return CRotation(DegreesToRadians(x), DegreesToRadians(y), DegreesToRadians(z), order);
}

CVector3 DegreesOf(const CRotation& rotation)
{
    return rotation.GetXYZAngles().ScaleInPlace(RadiansToDegrees(1.0));
}

CVector3 Turned(CVector3 vector, const CRotation& rotation)
{
    return vector.MulByMatrix3InPlace(rotation.GetMatrix());
}

std::string Show(const CVector3& v)
{
    return testing::PrintToString(std::vector<double>{v[0], v[1], v[2]});
}

TEST(Vector, Arithmetic)
{
    const CVector3 a(1, 2, 3);
    const CVector3 b(4, -5, 6);
    EXPECT_EQ(CVector3().Add(a, b), CVector3(5, -3, 9));
    EXPECT_EQ(CVector3().Sub(a, b), CVector3(-3, 7, -3));
    EXPECT_EQ(CVector3().Cross(CVector3(1, 0, 0), CVector3(0, 1, 0)), CVector3(0, 0, 1));
    EXPECT_EQ(CVector3(a).AddInPlace(b), CVector3(5, -3, 9));
    EXPECT_EQ(CVector3(a).SubInPlace(b), CVector3(-3, 7, -3));
    EXPECT_EQ(CVector3().Scale(2, a), CVector3(2, 4, 6));
    EXPECT_EQ(a.Dot(b), 12.0);
    EXPECT_EQ(CVector3(2, 3, 6).GetLength(), 7.0);
    EXPECT_EQ(CVector3(2, 3, 6).GetLengthSquared(), 49.0);
    CVector3 c = a;
    c.PutX(9);
    c.PutY(8);
    c.PutZ(7);
    EXPECT_EQ(c, CVector3(9, 8, 7));
    EXPECT_EQ(c.GetX() + c.GetY() + c.GetZ(), 24.0);
}

TEST(Vector, NormalizeRefusesWhatHasNoDirection)
{
    CVector3 vector(0, 3, 4);
    EXPECT_TRUE(vector.NormalizeInPlace());
    EXPECT_TRUE(vector.EpsilonEquals(CVector3(0, 0.6, 0.8), Tight));
    for (CVector3 none : {CVector3(0, 0, 0), CVector3(INFINITY, 0, 0), CVector3(NAN, 1, 1)}) {
        EXPECT_FALSE(none.NormalizeInPlace()) << Show(none);
    }
    CVector3 tiny(1e-200, 0, 0);
    EXPECT_TRUE(tiny.NormalizeInPlace());
    EXPECT_EQ(tiny, CVector3(1, 0, 0));
}

TEST(Matrix, ProductsAndInverses)
{
    const CMatrix3 a(1, 2, 3, 0, 1, 4, 5, 6, 0);
    CMatrix3 inverse = a;
    EXPECT_TRUE(inverse.InvertInPlace());
    EXPECT_TRUE(CMatrix3().Mul(a, inverse).EpsilonEquals(CMatrix3(), 1e-12));
    EXPECT_EQ(a.GetDeterminant(), 1.0);
    EXPECT_EQ(CMatrix3(a).TransposeInPlace(), CMatrix3(1, 0, 5, 2, 1, 6, 3, 4, 0));
    CMatrix3 flat(1, 2, 3, 2, 4, 6, 0, 0, 1);
    EXPECT_FALSE(flat.InvertInPlace());
    EXPECT_EQ(flat, CMatrix3(1, 2, 3, 2, 4, 6, 0, 0, 1));
    EXPECT_EQ(CMatrix3(a).SetIdentity(), CMatrix3());

    const CMatrix4 m(1, 2, 0, 3, 0, 1, 4, 0, 5, 6, 0, 1, 2, 0, 3, 1);
    CMatrix4 inverse4 = m;
    EXPECT_TRUE(inverse4.InvertInPlace());
    EXPECT_TRUE(CMatrix4().Mul(m, inverse4).EpsilonEquals(CMatrix4(), 1e-12));
    EXPECT_TRUE(CMatrix4().Mul(inverse4, m).EpsilonEquals(CMatrix4(), 1e-12));
    CMatrix4 flat4(1, 2, 3, 4, 2, 4, 6, 8, 0, 0, 1, 0, 0, 0, 0, 1);
    EXPECT_FALSE(flat4.InvertInPlace());
    EXPECT_EQ(CMatrix4(m).TransposeInPlace().GetValue(0, 2), 5.0);
    double values[16];
    m.Get(values);
    EXPECT_EQ(values[3], 3.0);
    CMatrix4 copy;
    copy.Set(values);
    EXPECT_EQ(copy, m);
}

TEST(Rotation, RightHandedForRowVectors)
{
    EXPECT_TRUE(Turned(CVector3(0, 1, 0), Degrees(90, 0, 0)).EpsilonEquals(CVector3(0, 0, 1), Tight));
    EXPECT_TRUE(Turned(CVector3(0, 0, 1), Degrees(0, 90, 0)).EpsilonEquals(CVector3(1, 0, 0), Tight));
    EXPECT_TRUE(Turned(CVector3(1, 0, 0), Degrees(0, 0, 90)).EpsilonEquals(CVector3(0, 1, 0), Tight));
    const CRotation aboutAxis(CVector3(0, 0, 2), DegreesToRadians(90));
    EXPECT_TRUE(Turned(CVector3(1, 0, 0), aboutAxis).EpsilonEquals(CVector3(0, 1, 0), Tight));
}

TEST(Rotation, OrdersApplyTheirFirstLetterFirst)
{
    const struct
    {
        CRotation::RotationOrder Order;
        int Axes[3];
    } cases[] = {
        {CRotation::siXYZ, {0, 1, 2}}, {CRotation::siXZY, {0, 2, 1}}, {CRotation::siYXZ, {1, 0, 2}},
        {CRotation::siYZX, {1, 2, 0}}, {CRotation::siZXY, {2, 0, 1}}, {CRotation::siZYX, {2, 1, 0}},
    };

    const double angles[3] = {20, 30, 40};
    for (const auto& test : cases) {
        CMatrix3 expected;
        for (const int axis : test.Axes) {
            double single[3] = {0, 0, 0};
            single[axis] = angles[axis];
            expected.MulInPlace(Degrees(single[0], single[1], single[2]).GetMatrix());
        }
        const CRotation rotation = Degrees(20, 30, 40, test.Order);
        EXPECT_TRUE(rotation.GetMatrix().EpsilonEquals(expected, Tight)) << test.Order;
        EXPECT_EQ(rotation.GetRotationOrder(), test.Order);
    }
}

TEST(Rotation, XyzAnglesOfAnyOrder)
{
    CRotation rotation(0, 0, 0, static_cast<CRotation::RotationOrder>(4));
    rotation.SetFromMatrix(Degrees(10, 20, 30).GetMatrix());
    EXPECT_EQ(rotation.GetRotationOrder(), CRotation::siZXY);
    EXPECT_TRUE(DegreesOf(rotation).EpsilonEquals(CVector3(10, 20, 30), 1e-10)) << Show(DegreesOf(rotation));
    double x = 0;
    double y = 0;
    double z = 0;
    rotation.GetXYZAngles(x, y, z);
    EXPECT_EQ(CVector3(x, y, z), rotation.GetXYZAngles());
}

TEST(Rotation, XyzAnglesWhereTheMiddleOneIsARightAngle)
{
    const struct
    {
        CVector3 Given;
        CVector3 Read;
    } cases[] = {
        {{10, 90, 0}, {10, 90, 0}},
        {{30, 90, 10}, {20, 90, 0}},
        {{10, -90, 30}, {40, -90, 0}},
    };

    for (const auto& test : cases) {
        const CVector3 read = DegreesOf(Degrees(test.Given[0], test.Given[1], test.Given[2]));
        EXPECT_TRUE(read.EpsilonEquals(test.Read, 1e-5)) << Show(read);
    }
}

TEST(Rotation, AnglesGiveTheSameMatrixBack)
{
    std::mt19937 random(20);
    std::uniform_real_distribution<double> angle(-180.0, 180.0);
    for (int i = 0; i < 2000; ++i) {
        const CRotation rotation = Degrees(angle(random), angle(random), angle(random));
        const CRotation again = CRotation().SetFromXYZAngles(rotation.GetXYZAngles());
        ASSERT_TRUE(again.GetMatrix().EpsilonEquals(rotation.GetMatrix(), 1e-9)) << "seed 20, case " << i;
        const CRotation fromMatrix = CRotation().SetFromMatrix(rotation.GetMatrix());
        ASSERT_TRUE(fromMatrix.GetMatrix().EpsilonEquals(rotation.GetMatrix(), Tight))
            << "seed 20, case " << i;
        CVector3 axis;
        const double turn = rotation.GetAxisAngle(axis);
        const CRotation fromAxis(axis, turn);
        ASSERT_TRUE(fromAxis.GetMatrix().EpsilonEquals(rotation.GetMatrix(), Tight)) << "seed 20, case " << i;
    }
}

TEST(Rotation, HalfTurnsKeepTheirAxis)
{
    for (const CVector3& axis : {CVector3(1, 0, 0), CVector3(0, 1, 0), CVector3(0, 0, 1), CVector3(1, 1, 0),
                                 CVector3(0, -1, 1), CVector3(1, 2, 3)}) {
        const CRotation half(axis, PI);
        const CRotation again = CRotation().SetFromMatrix(half.GetMatrix());
        EXPECT_TRUE(again.GetMatrix().EpsilonEquals(half.GetMatrix(), Tight)) << Show(axis);
    }
}

TEST(Rotation, NoTurnWithoutAnAxis)
{
    EXPECT_EQ(CRotation(CVector3(0, 0, 0), 1.0).GetMatrix(), CMatrix3());
    EXPECT_EQ(CRotation().SetFromAxisAngle(CVector3(NAN, 0, 0), 1.0).GetMatrix(), CMatrix3());
    CVector3 axis;
    EXPECT_EQ(CRotation().GetAxisAngle(axis), 0.0);
    EXPECT_EQ(axis, CVector3(1, 0, 0));
}

TEST(Rotation, ProductsInTheOrderOfMatrices)
{
    const CRotation a = Degrees(90, 0, 0);
    const CRotation b = Degrees(0, 0, 90);
    const CMatrix3 product = CMatrix3().Mul(a.GetMatrix(), b.GetMatrix());
    EXPECT_TRUE(CRotation().Mul(a, b).GetMatrix().EpsilonEquals(product, Tight));
    EXPECT_TRUE(CRotation(a).MulInPlace(b).GetMatrix().EpsilonEquals(product, Tight));
    EXPECT_TRUE(
        CRotation(a).MulInPlace(CRotation(a).InvertInPlace()).GetMatrix().EpsilonEquals(CMatrix3(), Tight));
}

TEST(Quaternion, Slerp)
{
    const CQuaternion a;
    const CQuaternion b = Degrees(0, 0, 90).GetQuaternion();
    const CQuaternion negative(-b.GetW(), -b.GetX(), -b.GetY(), -b.GetZ());
    const CMatrix3 third = Degrees(0, 0, 30).GetMatrix();
    EXPECT_TRUE(CQuaternion().Slerp(a, b, 1.0 / 3.0).GetMatrix().EpsilonEquals(third, Tight));
    EXPECT_TRUE(CQuaternion().Slerp(a, negative, 1.0 / 3.0).GetMatrix().EpsilonEquals(third, Tight));
    EXPECT_TRUE(CQuaternion().Slerp(a, a, 0.5).GetMatrix().EpsilonEquals(CMatrix3(), Tight));
    EXPECT_EQ(CQuaternion(0, 0, 0, 0).NormalizeInPlace().GetW(), 1.0);
    CQuaternion put;
    put.PutW(0.0);
    put.PutX(1.0);
    put.PutY(0.0);
    put.PutZ(0.0);
    EXPECT_TRUE(put.GetMatrix().EpsilonEquals(Degrees(180, 0, 0).GetMatrix(), Tight));
}

CTransformation Random(std::mt19937& random)
{
    std::uniform_real_distribution<double> number(-5.0, 5.0);
    std::uniform_real_distribution<double> size(0.2, 4.0);
    CTransformation transform;
    transform.SetScalingFromValues(size(random), size(random), size(random));
    transform.SetRotationFromXYZAnglesValues(number(random), number(random), number(random));
    transform.SetTranslationFromValues(number(random), number(random), number(random));
    return transform;
}

/// The matrix that the components of a transformation give.
CMatrix4 Recomposed(const CTransformation& transform)
{
    CTransformation made;
    made.SetScaling(transform.GetScaling());
    made.SetScalingOrientation(transform.GetScalingOrientation());
    made.SetRotation(transform.GetRotation());
    made.SetTranslation(transform.GetTranslation());
    return made.GetMatrix4();
}

TEST(Transformation, ScalesThenTurnsThenMoves)
{
    CTransformation transform;
    transform.SetTranslationFromValues(1, 2, 3);
    transform.SetRotationFromXYZAnglesValues(0, 0, DegreesToRadians(90));
    transform.SetScalingFromValues(2, 1, 1);
    EXPECT_TRUE(
        CVector3(1, 0, 0).MulByMatrix4InPlace(transform.GetMatrix4()).EpsilonEquals({1, 4, 3}, Tight));
    EXPECT_EQ(transform.GetTranslation(), CVector3(1, 2, 3));
    EXPECT_EQ(transform.GetScaling(), CVector3(2, 1, 1));
    EXPECT_TRUE(transform.GetRotationXYZAngles().EpsilonEquals({0, 0, DegreesToRadians(90)}, Tight));
    EXPECT_FALSE(transform.HasScalingOrientation());
    const CMatrix4 matrix = transform.GetMatrix4();
    EXPECT_EQ(matrix(3, 0), 1.0) << "the translation is the last row";
    EXPECT_EQ(matrix(0, 3), 0.0);
    EXPECT_EQ(transform.SetIdentity().GetMatrix4(), CMatrix4());
}

TEST(Transformation, AccessByValuesAndReferences)
{
    CTransformation transform;
    transform.SetScaling(CVector3(1, 2, 3));
    transform.SetTranslation(CVector3(4, 5, 6));
    transform.SetRotationFromQuaternion(CQuaternion(0, 0, 0, 1));
    double x = 0;
    double y = 0;
    double z = 0;
    transform.GetTranslationValues(x, y, z);
    EXPECT_EQ(CVector3(x, y, z), CVector3(4, 5, 6));
    transform.GetScalingValues(x, y, z);
    EXPECT_EQ(CVector3(x, y, z), CVector3(1, 2, 3));
    CVector3 vector;
    transform.GetTranslation(vector);
    EXPECT_EQ(vector, CVector3(4, 5, 6));
    transform.GetScaling(vector);
    EXPECT_EQ(vector, CVector3(1, 2, 3));
    CRotation rotation;
    transform.GetRotation(rotation);
    EXPECT_EQ(rotation.GetQuaternion().GetZ(), 1.0);
    EXPECT_EQ(transform.GetRotationQuaternion().GetZ(), 1.0);
    CMatrix4 matrix;
    transform.GetMatrix4(matrix);
    EXPECT_EQ(matrix, transform.GetMatrix4());
    CMatrix3 matrix3;
    rotation.GetMatrix(matrix3);
    EXPECT_TRUE(matrix3.EpsilonEquals(CMatrix3(-1, 0, 0, 0, -1, 0, 0, 0, 1), Tight));
}

TEST(Transformation, ProductsAreThoseOfTheMatrices)
{
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        const CTransformation a = Random(random);
        const CTransformation b = Random(random);
        const CMatrix4 product = CMatrix4().Mul(a.GetMatrix4(), b.GetMatrix4());
        ASSERT_EQ(CTransformation().Mul(a, b).GetMatrix4(), product) << "seed 7, case " << i;
        ASSERT_EQ(CTransformation(a).MulInPlace(b).GetMatrix4(), product) << "seed 7, case " << i;
        CTransformation inverse = a;
        ASSERT_TRUE(inverse.InvertInPlace());
        ASSERT_TRUE(inverse.MulInPlace(a).GetMatrix4().EpsilonEquals(CMatrix4(), 1e-11))
            << "seed 7, case " << i;
    }
    CTransformation flat;
    flat.SetScalingFromValues(0, 1, 1);
    EXPECT_FALSE(flat.InvertInPlace());
}

TEST(Transformation, AnyProductComesApartAndTogetherAgain)
{
    std::mt19937 random(11);
    for (int i = 0; i < 2000; ++i) {
        CTransformation product = Random(random);
        for (int k = 0; k < i % 4; ++k) {
            product.MulInPlace(Random(random));
        }
        if (i % 3 == 0) {
            product.MulInPlace(CTransformation().SetScalingFromValues(-1, 1, 1));
        }
        ASSERT_TRUE(Recomposed(product).EpsilonEquals(product.GetMatrix4(), 1e-8)) << "seed 11, case " << i;
    }
}

TEST(Transformation, ShearIsAScalingOrientation)
{
    const struct
    {
        const char* Name;
        CMatrix4 Matrix;
        bool IsSheared;
    } cases[] = {
        {"identity", CMatrix4(), false},
        {"shear", CMatrix4(1, 0, 0, 0, 0.1, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), true},
        {"single precision noise", CMatrix4(1, 2e-7, 0, 0, 0, 1, -1e-7, 0, 0, 0, 1, 0, 0, 0, 0, 1), false},
        {"flat", CMatrix4(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1), false},
        {"all zero", CMatrix4(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1), false},
        {"flat and sheared", CMatrix4(1, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1), true},
        {"a line", CMatrix4(1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1), true},
    };

    for (const auto& test : cases) {
        const CTransformation transform(test.Matrix);
        EXPECT_EQ(transform.HasScalingOrientation(), test.IsSheared) << test.Name;
        EXPECT_TRUE(Recomposed(transform).EpsilonEquals(test.Matrix, 1e-6)) << test.Name;
    }
    // A turned object below one that is scaled unevenly is sheared.
    CTransformation child;
    child.SetRotationFromXYZAnglesValues(0, 0, 0.5);
    CTransformation parent;
    parent.SetScalingFromValues(3, 1, 1);
    EXPECT_TRUE(CTransformation().Mul(child, parent).HasScalingOrientation());
    EXPECT_FALSE(CTransformation().Mul(parent, child).HasScalingOrientation());
}

TEST(Transformation, AMirroredMatrixScalesZNegatively)
{
    const CTransformation mirrored(CMatrix4(-2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_TRUE(mirrored.GetScaling().EpsilonEquals({2, 1, -1}, Tight)) << Show(mirrored.GetScaling());
    EXPECT_NEAR(mirrored.GetRotation().GetMatrix().GetDeterminant(), 1.0, Tight);
}

TEST(Transformation, WhatIsNoNumberDoesNotHang)
{
    const CTransformation broken(CMatrix4(NAN, 0, 0, 0, 0, INFINITY, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_TRUE(broken.HasScalingOrientation());
    EXPECT_TRUE(std::isnan(broken.GetScaling()[0]) || broken.GetScaling()[0] != 1.0);
}

} // namespace
} // namespace tq4x::test
