#pragma once

#include <string>
#include <vector>

namespace Benchmarks {

/// Figures of one measurement, in the order in which they were taken.
class Samples {
public:
    void add(double value) { m_values.push_back(value); }

    double median() const;
    double least() const;
    double greatest() const;

private:
    std::vector<double> m_values;
};

/// The number with its unit, at a sensible number of digits.
std::string figure(double value, const std::string& unit);

/// Median, least and greatest.
std::string spread(const Samples& samples, const std::string& unit);

struct Row {
    std::string what;
    std::string figure;
    std::string goal = {};
    std::string ratio = {};
};

/// A Markdown table for each thing measured, written to standard output as it grows.
class Report {
public:
    void section(const std::string& title);
    void add(const Row& row);
};

} // namespace Benchmarks
