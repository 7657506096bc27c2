// statisticspak.h: an accumulator of double samples and their descriptive statistics.
#ifndef ZQMATH_STATISTICSPAK_H
#define ZQMATH_STATISTICSPAK_H

#include "zqexport.h"

#include <memory>
#include <vector>

/// A fixed-capacity set of double samples with mean, deviations, variance, skewness, kurtosis
/// and median. Copies share one sample array: a write or a sort through one is seen by all.
/// A sample that is not there (past the count, or released) reads as NaN.
class ZQMATH_API CStatisticsPak {
public:
    /// All statistics 0.0, no array, count 0.
    CStatisticsPak();
    /// All statistics 0.0, count 0, a new array of capacity doubles (none if negative).
    explicit CStatisticsPak(int capacity);
    /// Shares the other's array, as assignment does.
    CStatisticsPak(const CStatisticsPak& other);
    /// Lets go of the array; the last object holding it frees it.
    ~CStatisticsPak();

    /// Copies every field and shares the other's array (a shallow copy, as callers expect).
    CStatisticsPak& operator=(const CStatisticsPak& other);

    /// Stores value at index count and counts it; a value past the capacity is dropped.
    void AddItem(double value);
    /// Sets the count to n and copies the n values into a new array of n doubles; copies that
    /// shared the earlier array keep it.
    void LoadData(double* values, int n);
    /// Lets go of the array; the count and the statistics stay as they are.
    void ReleaseData();

    /// Computes mean, average deviation, standard deviation, sample variance (n - 1),
    /// skewness and excess kurtosis; not the median.
    void Calculate();
    /// Sorts the samples ascending in place and sets the median, one place past the middle.
    void CalculateMedian();
    /// (x - first sample) / (last sample - first sample); the range is the sample range only
    /// once CalculateMedian has sorted the samples. A zero range is not tested.
    double Normalize(double x) const;
    /// Writes first sample, median, last sample, mean, average deviation, standard deviation,
    /// variance, skewness and kurtosis as "%f" separated by blanks, with no newline.
    void SummaryLine(char* out) const;

    double GetMean() const;
    /// The mean of the absolute deviations from the mean.
    double GetAverageDeviation() const;
    double GetStandardDeviation() const;
    double GetVariance() const;
    double GetSkewness() const;
    /// The excess kurtosis (3 subtracted).
    double GetKurtosis() const;
    double GetMedian() const;
    /// The number of samples in use.
    int GetCount() const;

private:
    /// Sample i, or NaN where there is none (outside the count or the array).
    double Sample(int i) const;
    /// The number of samples that are both counted and stored.
    int StoredCount() const;

    double m_mean;
    double m_averageDeviation;
    double m_standardDeviation;
    double m_variance;
    double m_skewness;
    double m_kurtosis;
    double m_median;
    /// The sample array; its size is the capacity fixed when it was made.
    std::shared_ptr<std::vector<double>> m_samples;
    int m_count;
};

#endif
