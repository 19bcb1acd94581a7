// The files bind the single precision of these operations and the order of their terms: every bit counts. The
// expected values were computed apart, each operation rounded to single precision in the order of the header.

#include "math/Matrix44.h"

#include <bit>
#include <cstdint>

namespace tq4x
{
namespace
{

std::array<std::uint32_t, 16> Bits(const Matrix44& matrix)
{
    std::array<std::uint32_t, 16> bits;
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = std::bit_cast<std::uint32_t>(matrix.M[i]);
    return bits;
}

std::array<std::uint32_t, 3> Bits(const Vector3& vector)
{
    return {std::bit_cast<std::uint32_t>(vector.X), std::bit_cast<std::uint32_t>(vector.Y),
            std::bit_cast<std::uint32_t>(vector.Z)};
}

TEST(MatrixBits, Compose)
{
    const struct
    {
        const char* Name;
        TransformParts Parts;
        std::array<float, 16> Expected;
    } cases[] = {
        {"identity",
         {{0x1p+0f, 0x1p+0f, 0x1p+0f}, {0.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 0.0f}},
         {0x1p+0f, 0.0f, -0.0f, 0.0f, 0.0f, 0x1p+0f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f, 0.0f, 0.0f, 0.0f, 0.0f,
          0x1p+0f}},
        {"general",
         {{0x1.19999ap+0f, 0x1.666666p-1f, 0x1.266666p+1f},
          {0x1.89999ap+3f, -0x1.6cccccp+5f, 0x1.3b999ap+6f},
          {0x1.99999ap-4f, -0x1.44ccccp+4f, 0x1.e848p+19f}},
         {0x1.2f7412p-3f, 0x1.82adc4p-1f, 0x1.926418p-1f, 0.0f, -0x1.621fd8p-1f, 0x1.bc5dd4p-6f,
          0x1.ab5ad8p-4f, 0.0f, 0x1.5fa2b6p-3f, -0x1.ab7bfap+0f, 0x1.928164p+0f, 0.0f, 0x1.99999ap-4f,
          -0x1.44ccccp+4f, 0x1.e848p+19f, 0x1p+0f}},
        {"mirror, beyond a turn",
         {{-0x1.8p+0f, 0x1.8p+1f, 0x1.47ae14p-7f},
          {0x1.728p+8f, 0x1.6ap+7f, -0x1.6aap+9f},
          {0.0f, 0.0f, 0.0f}},
         {0x1.7e54b4p+0f, -0x1.190cd8p-3f, -0x1.ace90cp-6f, 0.0f, 0x1.0aa81cp-2f, 0x1.781902p+1f,
          -0x1.17df04p-1f, 0.0f, -0x1.6207ecp-12f, -0x1.d7996ap-10f, -0x1.4224d6p-7f, 0.0f, 0.0f, 0.0f, 0.0f,
          0x1p+0f}},
        {"quarter turns",
         {{0x1p+0f, 0x1p+0f, 0x1p+0f}, {0x1.68p+6f, 0x1.68p+6f, 0x1.68p+6f}, {0x1p+0f, 0x1p+1f, 0x1.8p+1f}},
         {0x1.377ceap-108f, 0x1.1a6264p-54f, -0x1p+0f, 0.0f, 0.0f, 0x1p+0f, 0x1.1a6264p-54f, 0.0f, 0x1p+0f,
          0.0f, 0x1.377ceap-108f, 0.0f, 0x1p+0f, 0x1p+1f, 0x1.8p+1f, 0x1p+0f}},
        {"no scale",
         {{0.0f, 0x1p+0f, -0.0f}, {0x1.ep+4f, 0x1.4p+5f, 0x1.9p+5f}, {0.0f, 0.0f, 0.0f}},
         {0.0f, 0.0f, -0.0f, 0.0f, -0x1.d3ca3p-2f, 0x1.9b1216p-1f, 0x1.8836fap-2f, 0.0f, -0.0f, -0.0f, -0.0f,
          0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f}},
    };

    for (const auto& row : cases)
        EXPECT_EQ(Bits(ComposeMatrix(row.Parts)), Bits(Matrix44{row.Expected})) << row.Name;
}

TEST(MatrixBits, Decompose)
{
    const struct
    {
        const char* Name;
        std::array<float, 16> Matrix;
        TransformParts Expected;
    } cases[] = {
        {"identity",
         {0x1p+0f, 0.0f, -0.0f, 0.0f, 0.0f, 0x1p+0f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f, 0.0f, 0.0f, 0.0f, 0.0f,
          0x1p+0f},
         {{0x1p+0f, 0x1p+0f, 0x1p+0f}, {0.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 0.0f}}},
        {"general",
         {0x1.2f7412p-3f, 0x1.82adc4p-1f, 0x1.926418p-1f, 0.0f, -0x1.621fd8p-1f, 0x1.bc5dd4p-6f,
          0x1.ab5ad8p-4f, 0.0f, 0x1.5fa2b6p-3f, -0x1.ab7bfap+0f, 0x1.928164p+0f, 0.0f, 0x1.99999ap-4f,
          -0x1.44ccccp+4f, 0x1.e848p+19f, 0x1p+0f},
         {{0x1.19999ap+0f, 0x1.666666p-1f, 0x1.266666p+1f},
          {0x1.899998p+3f, -0x1.6ccccap+5f, 0x1.3b999ap+6f},
          {0x1.99999ap-4f, -0x1.44ccccp+4f, 0x1.e848p+19f}}},
        {"mirror in X",
         {-0x1.2f7412p-3f, -0x1.82adc4p-1f, -0x1.926418p-1f, 0.0f, -0x1.621fd8p-1f, 0x1.bc5dd4p-6f,
          0x1.ab5ad8p-4f, 0.0f, 0x1.5fa2b6p-3f, -0x1.ab7bfap+0f, 0x1.928164p+0f, 0.0f, 0.0f, 0.0f, 0.0f,
          0x1p+0f},
         {{0x1.19999ap+0f, 0x1.666666p-1f, -0x1.266666p+1f},
          {0x1.4f6666p+7f, 0x1.6ccccap+5f, -0x1.946666p+6f},
          {0.0f, 0.0f, 0.0f}}},
        {"Y at 90",
         {0x1.161822p-54f, 0x1.8848c2p-57f, -0x1p+0f, 0.0f, 0x1.0907dcp-1f, 0x1.ee8dd6p+0f, 0x1.dd5cf6p-55f,
          0.0f, 0x1.72ea6p+1f, -0x1.8d8bcap-1f, 0x1.7fe406p-53f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1p+0f, 0x1p+1f, 0x1.8p+1f}, {0x1.dffffep+3f, 0x1.68p+6f, 0.0f}, {0.0f, 0.0f, 0.0f}}},
        {"Y at -90",
         {0x1.161822p-54f, 0x1.8848c2p-57f, 0x1p+0f, 0.0f, -0x1.25abdp+0f, 0x1.a367e6p+0f, 0x1.dd5cf6p-55f,
          0.0f, -0x1.3a8decp+1f, -0x1.b881b8p+0f, 0x1.7fe406p-53f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1p+0f, 0x1p+1f, 0x1.8p+1f}, {0x1.18p+5f, -0x1.68p+6f, 0.0f}, {0.0f, 0.0f, 0.0f}}},
        {"Y short of -90",
         {0x1.68669ep-12f, 0x1.fc631ep-15f, 0x1.fffffep-1f, 0.0f, -0x1.25abdp-1f, 0x1.a367e6p-1f,
          0x1.3552c4p-13f, 0.0f, -0x1.a367e4p-1f, -0x1.25abdp-1f, 0x1.4bac48p-12f, 0.0f, 0.0f, 0.0f, 0.0f,
          0x1p+0f},
         {{0x1p+0f, 0x1p+0f, 0x1p+0f}, {0x1.9p+4f, -0x1.67ebbep+6f, 0x1.400002p+3f}, {0.0f, 0.0f, 0.0f}}},
        {"Y too near to -90 to be told from it",
         {0x1.c99df2p-20f, 0x1.42c2c8p-22f, 0x1p+0f, 0.0f, -0x1.25abdp-1f, 0x1.a367e6p-1f, 0x1.88c2f2p-21f,
          0.0f, -0x1.a367e6p-1f, -0x1.25abdp-1f, 0x1.a523dp-20f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1p+0f, 0x1p+0f, 0x1p+0f}, {0x1.18p+5f, -0x1.68p+6f, 0.0f}, {0.0f, 0.0f, 0.0f}}},
        {"X scale exactly 0",
         {0.0f, 0.0f, -0.0f, 0.0f, -0x1.2ebbd6p+0f, 0x1.0986b8p+1f, 0x1.7b2234p-1f, 0.0f, 0x1.03bc9ap+1f,
          0x1.1ec862p-3f, 0x1.6c94d4p+1f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0.0f, 0x1.4p+1f, 0x1.cp+1f}, {0x1.4p+4f, 0.0f, 0.0f}, {0.0f, 0.0f, 0.0f}}},
        {"Y scale exactly 0",
         {0x1.fd807cp-1f, 0x1.ab85dcp-1f, -0x1.8p-1f, 0.0f, -0.0f, 0.0f, 0.0f, 0.0f, 0x1.03bc9ap+1f,
          0x1.1ec862p-3f, 0x1.6c94d4p+1f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1.8p+0f, 0.0f, 0x1.cp+1f}, {0.0f, 0x1.e00002p+4f, 0x1.400002p+5f}, {0.0f, 0.0f, 0.0f}}},
        {"Z scale exactly 0",
         {0x1.fd807cp-1f, 0x1.ab85dcp-1f, -0x1.8p-1f, 0.0f, -0x1.2ebbd6p+0f, 0x1.0986b8p+1f, 0x1.7b2234p-1f,
          0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1.8p+0f, 0x1.4p+1f, 0.0f}, {0x1.68p+6f, 0x1.e00002p+4f, 0x1.400002p+5f}, {0.0f, 0.0f, 0.0f}}},
        {"no scale at all",
         {0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f, 0x1p+1f, 0x1.8p+1f,
          0x1p+0f},
         {{0.0f, 0.0f, 0.0f}, {0.0f, -0.0f, 0.0f}, {0x1p+0f, 0x1p+1f, 0x1.8p+1f}}},
        {"scale within 1e-6 of 0",
         {0x1.53aafep-1f, 0x1.1d03e8p-1f, -0x1p-1f, 0.0f, -0x1.fbe728p-23f, 0x1.bd7aa6p-22f, 0x1.3e0a52p-23f,
          0.0f, 0x1.28d78cp-1f, 0x1.47c07p-5f, 0x1.a0aa16p-1f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1p+0f, 0x1.0c6f7ap-21f, 0x1p+0f},
          {0x1.5ddf12p-17f, 0x1.e00002p+4f, 0x1.400002p+5f},
          {0.0f, 0.0f, 0.0f}}},
        {"scale beyond 1e-6",
         {0x1.53aafep-1f, 0x1.1d03e8p-1f, -0x1p-1f, 0.0f, -0x1.1758bcp-21f, 0x1.ea06eap-21f, 0x1.5dd826p-22f,
          0.0f, 0x1.28d78cp-1f, 0x1.47c07p-5f, 0x1.a0aa16p-1f, 0.0f, 0.0f, 0.0f, 0.0f, 0x1p+0f},
         {{0x1p+0f, 0x1.27476cp-20f, 0x1p+0f},
          {0x1.400002p+4f, 0x1.e00002p+4f, 0x1.400002p+5f},
          {0.0f, 0.0f, 0.0f}}},
    };

    for (const auto& row : cases) {
        const TransformParts parts = DecomposeMatrix(Matrix44{row.Matrix});
        EXPECT_EQ(Bits(parts.Scale), Bits(row.Expected.Scale)) << row.Name;
        EXPECT_EQ(Bits(parts.Rotate), Bits(row.Expected.Rotate)) << row.Name;
        EXPECT_EQ(Bits(parts.Translate), Bits(row.Expected.Translate)) << row.Name;
    }
}

TEST(MatrixBits, Multiply)
{
    const struct
    {
        std::array<float, 16> A;
        std::array<float, 16> B;
        std::array<float, 16> Expected;
    } cases[] = {
        {{0x1.798dd4p-1f, 0x1.736284p+0f, 0x1.c56ad6p+0f, 0x1.53cd44p+1f, 0x1.707bf6p+0f, 0x1.44587ap+1f,
          -0x1.69b958p+1f, -0x1.a66dc8p-3f, 0x1.547f7ap+1f, 0x1.c9a65cp-1f, 0x1.33e43ep+1f, -0x1.290ecep+1f,
          -0x1.7c145cp-3f, -0x1.85439ep+0f, 0x1.0cdde2p-2f, 0x1.c64b6ep-2f},
         {-0x1.75eda6p+1f, -0x1.b31a6p+0f, -0x1.52b71p+0f, 0x1.3fc0d4p+1f, 0x1.98278p+0f, -0x1.056c88p+1f,
          0x1.c86af4p+0f, -0x1.156d38p+1f, 0x1.68d06cp-1f, -0x1.1eb1eap+1f, -0x1.7ea30cp+1f, 0x1.1d3d24p+1f,
          -0x1.be4666p+0f, -0x1.b5055cp+0f, 0x1.727fdap+1f, 0x1.1e0258p+1f},
         {-0x1.9c471cp+1f, -0x1.96e2a4p+3f, 0x1.000488p+2f, 0x1.1272c6p+3f, -0x1.cbfd72p+0f, -0x1.e142bp-1f,
          0x1.4ed96ep+3f, -0x1.14f37ep+3f, -0x1.35d9bp-1f, -0x1.f172b8p+2f, -0x1.fab134p+3f, 0x1.387ba2p+2f,
          -0x1.3c39f6p+1f, 0x1.09ab1cp+1f, -0x1.f757f8p+0f, 0x1.1a245ap+2f}},
        {{-0x1.43a094p+0f, 0x1.626a44p+1f, 0x1.e1fa5ep-3f, 0x1.1125cap+0f, -0x1.c5756cp+0f, 0x1.52ab68p+1f,
          0x1.24d376p+0f, 0x1.665246p+1f, 0x1.2e64c4p+1f, -0x1.350f6cp+0f, -0x1.aa6caep-1f, -0x1.008bb6p+1f,
          -0x1.1019d6p+1f, -0x1.4df902p+1f, -0x1.311cc8p+0f, 0x1.3cc1p-1f},
         {-0x1.7d66dap+1f, 0x1.114e98p+0f, -0x1.f1fb18p-1f, -0x1.23e794p+0f, 0x1.e93e68p+0f, -0x1.d934dp-4f,
          -0x1.1af11ap+0f, -0x1.cd93b2p-4f, 0x1.3a5f2ep+0f, -0x1.54392ap+1f, 0x1.6ce06p+1f, -0x1.6e7072p+1f,
          0x1.7faf66p+0f, 0x1.08de58p+1f, -0x1.721fc8p+1f, 0x1.b9f74ep+0f},
         {0x1.5e4abp+3f, -0x1.65028p-4f, -0x1.0fb044p+2f, 0x1.261ddp+1f, 0x1.fdea28p+3f, 0x1.1c7b8p-1f,
          -0x1.8245e6p+2f, 0x1.a3d424p+1f, -0x1.abf224p+3f, 0x1.74ba5p-1f, 0x1.3a9d54p+1f, -0x1.d11b48p+1f,
          0x1.9f763ap-1f, 0x1.3d71b8p+1f, -0x1.e161ep-3f, 0x1.ccacf8p+2f}},
    };

    for (const auto& row : cases)
        EXPECT_EQ(Bits(Multiply(Matrix44{row.A}, Matrix44{row.B})), Bits(Matrix44{row.Expected}));
}

} // namespace
} // namespace tq4x
