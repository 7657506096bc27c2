// The statistics accumulator.
#include "statisticspak.h"

#include "stats/samplesort.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>

CStatisticsPak::CStatisticsPak()
    : m_mean(0.0), m_averageDeviation(0.0), m_standardDeviation(0.0), m_variance(0.0),
      m_skewness(0.0), m_kurtosis(0.0), m_median(0.0), m_count(0) {}

CStatisticsPak::CStatisticsPak(int capacity) : CStatisticsPak() {
    m_samples = std::make_shared<std::vector<double>>(std::max(capacity, 0));
}

CStatisticsPak::CStatisticsPak(const CStatisticsPak& other) = default;

CStatisticsPak::~CStatisticsPak() = default;

// The array is shared, not duplicated: callers rely on copies seeing each other's samples.
CStatisticsPak& CStatisticsPak::operator=(const CStatisticsPak& other) = default;

void CStatisticsPak::AddItem(double value) {
    // Past the capacity the value is dropped rather than written outside the array.
    if (m_samples == nullptr || m_count < 0 ||
        static_cast<std::size_t>(m_count) >= m_samples->size()) {
        return;
    }
    (*m_samples)[static_cast<std::size_t>(m_count)] = value;
    ++m_count;
}

void CStatisticsPak::LoadData(double* values, int n) {
    m_count = n;
    // The earlier array is let go, not freed: copies that share it keep reading it.
    m_samples = std::make_shared<std::vector<double>>(std::max(n, 0));
    std::copy(values, values + StoredCount(), m_samples->begin());
}

void CStatisticsPak::ReleaseData() {
    m_samples.reset();
}

void CStatisticsPak::Calculate() {
    const double n = static_cast<double>(m_count);
    double sum = 0.0;
    for (int i = 0; i < m_count; ++i) {
        sum += Sample(i);
    }
    m_mean = sum / n;

    m_averageDeviation = 0.0;
    double sum2 = 0.0;
    double sum3 = 0.0;
    double sum4 = 0.0;
    for (int i = 0; i < m_count; ++i) {
        const double d = Sample(i) - m_mean;
        double power = d * d;
        m_averageDeviation += std::fabs(d);
        sum2 += power;
        power *= d;
        sum3 += power;
        power *= d;
        sum4 += power;
    }
    m_averageDeviation /= n;
    m_variance = sum2 / (n - 1.0);
    m_standardDeviation = std::sqrt(m_variance);

    // A NaN variance counts as zero (an unordered comparison is taken as equal): one sample
    // (0 / 0) keeps skewness and kurtosis at their raw sums, 0.0, not NaN.
    if (m_variance < 0.0 || m_variance > 0.0) {
        m_skewness = sum3 / (n * m_variance * m_standardDeviation);
        m_kurtosis = sum4 / (n * m_variance * m_variance) - 3.0;
    } else {
        m_skewness = sum3;
        m_kurtosis = sum4;
    }
}

void CStatisticsPak::CalculateMedian() {
    if (m_samples != nullptr) {
        zq::detail::SortSamples(m_samples->data(), static_cast<std::size_t>(StoredCount()));
    }
    // The middle index is one place past the textbook one on purpose: callers depend on these
    // medians. Where the shifted index reaches the count (one or two samples), the last sample
    // is read instead of the element past the end.
    const int half = m_count / 2;
    const double upper = Sample(std::min(half + 1, m_count - 1));
    if (m_count % 2 != 0) {
        m_median = upper;
    } else {
        m_median = (Sample(half) + upper) * 0.5;
    }
}

double CStatisticsPak::Normalize(double x) const {
    const double first = Sample(0);
    return (x - first) / (Sample(m_count - 1) - first);
}

void CStatisticsPak::SummaryLine(char* out) const {
    std::sprintf(out, "%f %f %f %f %f %f %f %f %f", Sample(0), m_median, Sample(m_count - 1),
                 m_mean, m_averageDeviation, m_standardDeviation, m_variance, m_skewness,
                 m_kurtosis);
}

double CStatisticsPak::GetMean() const {
    return m_mean;
}

double CStatisticsPak::GetAverageDeviation() const {
    return m_averageDeviation;
}

double CStatisticsPak::GetStandardDeviation() const {
    return m_standardDeviation;
}

double CStatisticsPak::GetVariance() const {
    return m_variance;
}

double CStatisticsPak::GetSkewness() const {
    return m_skewness;
}

double CStatisticsPak::GetKurtosis() const {
    return m_kurtosis;
}

double CStatisticsPak::GetMedian() const {
    return m_median;
}

int CStatisticsPak::GetCount() const {
    return m_count;
}

double CStatisticsPak::Sample(int i) const {
    if (i < 0 || i >= StoredCount()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return (*m_samples)[static_cast<std::size_t>(i)];
}

int CStatisticsPak::StoredCount() const {
    if (m_samples == nullptr) {
        return 0;
    }
    const std::size_t stored =
        std::min(static_cast<std::size_t>(std::max(m_count, 0)), m_samples->size());
    return static_cast<int>(stored);
}
