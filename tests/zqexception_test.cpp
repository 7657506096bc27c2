// Error records and the exceptions that carry them.
#include <zqmath.h>

#include <gtest/gtest.h>

#include <map>

namespace {

CZqException FromRecord(int number) {
    return CZqException(CZqErrRec::Record(number));
}

} // namespace

TEST(ErrorTable, EverySlotHoldsTheRecordOfItsNumber) {
    for (int n = 1; n <= 126; ++n) {
        ASSERT_EQ(FromRecord(n).ErrNum(), n);
    }
    // Each module owns one contiguous block of numbers; 120-125 are unassigned placeholders.
    const std::map<std::string, std::pair<int, int>> blocks = {
        {"math", {1, 11}},     {"pstore", {12, 33}}, {"layer", {34, 64}},   {"node", {65, 81}},
        {"runcore", {82, 99}}, {"ai", {100, 100}},   {"system", {101, 125}}};
    for (const auto& [module, range] : blocks) {
        for (int n = range.first; n <= range.second; ++n) {
            EXPECT_EQ(FromRecord(n).DecodeEModule(), module) << n;
        }
    }
    EXPECT_EQ(FromRecord(126).DecodeEModule(), "layer");
}

TEST(ErrorTable, OddTextsAreKeptExactly) {
    EXPECT_EQ(FromRecord(1).Text(), "Division by 0");
    EXPECT_EQ(FromRecord(7).Text(), "Bad asymetrix mesh reinterpolation count");
    EXPECT_EQ(FromRecord(8).Text(), "image dimension  too large");
    EXPECT_EQ(FromRecord(22).Text(), "FORCIBLE RENAME PATCH ");
    EXPECT_EQ(FromRecord(37).Text(), "This  pixelmap format isn't supported");
    EXPECT_EQ(FromRecord(61).Text(), "No compresssor for selected format");
    EXPECT_EQ(FromRecord(66).Text(), "3dsfile  read error");
    EXPECT_EQ(FromRecord(126).Text(), "Image dimensions must both be powers of two");

    const CZqException matrix = FromRecord(6);
    EXPECT_TRUE(matrix.DecodeEErrClass() == "math" && matrix.DecodeESeverity() == "severe");

    for (int n = 120; n <= 125; ++n) {
        const CZqException placeholder = FromRecord(n);
        EXPECT_TRUE(placeholder.Text().empty() && placeholder.DecodeEErrClass() == "internal" &&
                    placeholder.DecodeESeverity() == "unknown")
            << n;
    }
}

TEST(ZqException, NumberedConstructionAppendsTextWithoutSeparator) {
    EXPECT_EQ(CZqException(2, "abc").Text(), "Cannot identify octantabc");
    EXPECT_EQ(CZqException(2, nullptr).Text(), "Cannot identify octant");
    const CZqMathException math(9, nullptr);
    EXPECT_TRUE(math.ErrNum() == 9 && math.Code() == CZqException::kParameterError &&
                math.Severity() == CZqException::kWarning);

    CZqException* heap = CZqErrRec::Exception(126);
    ASSERT_NE(heap, nullptr);
    EXPECT_TRUE(heap->ErrNum() == 126 && heap->Class() == "ZqGeneric");
    // The destructor is not virtual, so the object is destroyed as the plain CZqException it is.
    heap->CZqException::~CZqException();
    ::operator delete(heap);
}

TEST(ZqException, DefaultAndFreeTextForms) {
    const CZqException plain;
    EXPECT_TRUE(plain.ErrNum() == 0 && plain.Text() == "generic");
    EXPECT_TRUE(plain.DecodeEModule() == "system" && plain.DecodeEErrClass() == "internal" &&
                plain.DecodeESeverity() == "unknown");

    const CZqException unfinished("Not yet implemented", 5, CZqException::kFatal);
    EXPECT_TRUE(unfinished.Text() == "Not yet implemented" && unfinished.Code() == 5 &&
                unfinished.Severity() == 4);
    EXPECT_EQ(CZqMathException("x", 3, CZqException::kDamaging).DecodeESeverity(), "damaging");
}

TEST(ZqException, DecoderFallbacksAndSharedText) {
    const CZqErrRec odd(70000, static_cast<CZqException::EModule>(0), "odd",
                        static_cast<CZqException::EErrClass>(0),
                        static_cast<CZqException::ESeverity>(7));
    const CZqException e(odd);
    EXPECT_EQ(e.ErrNum(), static_cast<short>(70000 - 65536)); // the number keeps 16 bits
    EXPECT_EQ(e.DecodeEModule(), "unknown module");
    // The severity's fallback is not "unknown".
    EXPECT_TRUE(e.DecodeEErrClass() == "unknown error class" &&
                e.DecodeESeverity() == "unknown error class");

    // One static string per decoder: the next call rewrites what an earlier one returned.
    const std::string& first = FromRecord(12).DecodeEModule();
    const std::string& second = FromRecord(1).DecodeEModule();
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first, "math");
}

TEST(ZqException, MathExceptionKeepsItsClassThroughTheBase) {
    try {
        throw CZqMathException(6, nullptr);
    } catch (const CZqException& caught) {
        EXPECT_TRUE(caught.Class() == "ZqMath" && caught.Text() == "matrix error");
    }
    CZqMathException target(1, nullptr);
    CZqException& asBase = target;
    asBase = FromRecord(4);
    EXPECT_TRUE(target.Class() == "ZqMath" && target.Text() == "Illegal quad edge index");
}
