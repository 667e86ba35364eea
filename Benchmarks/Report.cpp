#include "Report.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace Benchmarks {

namespace {

std::string padded(std::string text, size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

} // namespace

double Samples::median() const {
    std::vector<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    return sorted.at(sorted.size() / 2);
}

double Samples::least() const { return *std::min_element(m_values.begin(), m_values.end()); }

double Samples::greatest() const { return *std::max_element(m_values.begin(), m_values.end()); }

std::string figure(double value, const std::string& unit) {
    const int decimals = std::abs(value) >= 100 || value == std::round(value) ? 0
                         : std::abs(value) >= 1                               ? 1
                                                                              : 2;
    char text[64];
    snprintf(text, sizeof text, "%.*f%s%s", decimals, value, unit.empty() ? "" : " ", unit.c_str());
    return text;
}

std::string spread(const Samples& samples, const std::string& unit) {
    return figure(samples.median(), unit) + " (" + figure(samples.least(), "to ") +
           figure(samples.greatest(), unit) + ")";
}

void Report::section(const std::string& title) {
    std::cout << "\n### " << title << "\n\n";
    add({"What", "Figure", "Goal", "Ratio"});
    add({std::string(44, '-'), std::string(30, '-'), std::string(14, '-'), std::string(26, '-')});
}

void Report::add(const Row& row) {
    std::cout << "| " << padded(row.what, 44) << " | " << padded(row.figure, 30) << " | "
              << padded(row.goal, 14) << " | " << padded(row.ratio, 26) << " |" << std::endl;
}

} // namespace Benchmarks
