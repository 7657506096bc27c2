// The statistics accumulator and its sample sort.
#include <zqmath.h>

#include "stats/samplesort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

namespace {

CStatisticsPak Filled(std::vector<double> values) {
    CStatisticsPak pak;
    pak.LoadData(values.data(), static_cast<int>(values.size()));
    pak.Calculate();
    pak.CalculateMedian();
    return pak;
}

} // namespace

TEST(StatisticsOracle, MatchesLongDoubleSumsOnRandomSamples) {
    std::mt19937 random(20240611u);
    std::uniform_real_distribution<double> uniform(-100.0, 300.0);
    for (const int n : {2, 3, 50, 1001}) {
        std::vector<double> x(n);
        std::generate(x.begin(), x.end(), [&] { return uniform(random); });
        const CStatisticsPak pak = Filled(x);
        const long double mean = std::accumulate(x.begin(), x.end(), 0.0L) / n;
        long double abs = 0, s2 = 0, s3 = 0, s4 = 0;
        for (const double v : x) {
            const long double d = v - mean;
            abs += std::fabs(d);
            s2 += d * d;
            s3 += d * d * d;
            s4 += d * d * d * d;
        }
        const long double var = s2 / (n - 1);
        const auto expectClose = [](double got, long double want) {
            EXPECT_NEAR(got, static_cast<double>(want), 1e-11 * (1.0 + std::fabs(got)));
        };
        expectClose(pak.GetMean(), mean);
        expectClose(pak.GetAverageDeviation(), abs / n);
        expectClose(pak.GetVariance(), var);
        expectClose(pak.GetStandardDeviation(), std::sqrt(var));
        expectClose(pak.GetSkewness(), s3 / (n * var * std::sqrt(var)));
        expectClose(pak.GetKurtosis(), s4 / (n * var * var) - 3);
        // The median one place past the middle (the last sample for n = 2).
        std::sort(x.begin(), x.end());
        const double upper = x[std::min(n / 2 + 1, n - 1)];
        EXPECT_EQ(pak.GetMedian(), n % 2 ? upper : (x[n / 2] + upper) * 0.5);
    }
}

TEST(StatisticsQuirks, ShiftedMedianRawSumsAndExactSummaryLine) {
    char line[256];
    Filled({5, 3, 1, 4, 2}).SummaryLine(line);
    EXPECT_STREQ(
        line, "1.000000 4.000000 5.000000 3.000000 1.200000 1.581139 2.500000 0.000000 -1.912000");
    // One sample: the median reads it, not the element past it; the variance is 0 / 0, and
    // NaN counts as zero, so skewness and kurtosis keep their raw sums instead of 0 / NaN.
    const CStatisticsPak one = Filled({7});
    EXPECT_TRUE(one.GetMedian() == 7.0 && std::isnan(one.GetVariance()));
    EXPECT_TRUE(one.GetSkewness() == 0.0 && one.GetKurtosis() == 0.0);
}

TEST(StatisticsSharing, CopiesSeeEachOthersSamplesAndOutliveEachOther) {
    CStatisticsPak copy;
    {
        CStatisticsPak pak(8);
        for (const double v : {4.0, 1.0, 3.0, 2.0}) {
            pak.AddItem(v);
        }
        copy = pak;
        const CStatisticsPak constructed(pak);
        copy.CalculateMedian();
        EXPECT_EQ(constructed.Normalize(1.0), 0.0); // the copy's sort is seen by the others
        pak.AddItem(9.0);                           // written at index 4 of the shared array...
        copy.AddItem(7.0);                          // ...and overwritten there through the copy
        EXPECT_EQ(pak.Normalize(7.0), 1.0);
        pak.LoadData(nullptr, 0); // lets go of the shared array without freeing it
    }
    EXPECT_EQ(copy.Normalize(4.0), 0.5); // still readable after the others are gone
    copy.ReleaseData();
    EXPECT_EQ(copy.GetCount(), 5);
}

TEST(StatisticsGuards, MissingSamplesReadAsNaNAndExtraItemsAreDropped) {
    CStatisticsPak pak(1);
    pak.AddItem(1.0);
    pak.AddItem(2.0); // past the capacity
    EXPECT_EQ(pak.GetCount(), 1);
    pak.ReleaseData();
    pak.Calculate();
    pak.CalculateMedian();
    EXPECT_TRUE(std::isnan(pak.GetMean()) && std::isnan(pak.GetMedian()) &&
                std::isnan(pak.Normalize(1.0)));
}

TEST(SampleSort, SortsLikeAnOrderingAndKeepsEveryValueWithNaN) {
    std::mt19937 random(7u);
    std::uniform_int_distribution<int> digit(0, 9);
    // NaN first, so that two sorted copies of the same values compare equal.
    const auto total = [](double a, double b) { return std::isnan(a) ? !std::isnan(b) : a < b; };
    const auto same = [](double a, double b) { return a == b || (a != a && b != b); };
    for (std::size_t n = 0; n < 600; n += 1 + n / 8) {
        const bool withNaN = n % 2 != 0;
        std::vector<double> x(n);
        for (double& v : x) {
            v = withNaN && digit(random) < 3 ? std::nan("") : digit(random);
        }
        std::vector<double> expected = x;
        std::sort(expected.begin(), expected.end(), total);
        zq::detail::SortSamples(x.data(), n);
        // With NaN the order is unspecified, but every value is kept.
        EXPECT_TRUE(withNaN || std::is_sorted(x.begin(), x.end()));
        std::sort(x.begin(), x.end(), total);
        EXPECT_TRUE(std::equal(x.begin(), x.end(), expected.begin(), expected.end(), same));
    }
}
