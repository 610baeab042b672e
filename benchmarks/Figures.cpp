#include "Figures.h"

#include <algorithm>
#include <cstdio>

bool print(const std::string& name, const double value, const double target) {
    const bool isMet = target == NoTarget || value <= target;
    std::printf("%-48s %10.3f", name.c_str(), value);
    if(target == NoTarget) std::printf(" %8s\n", "-");
    else std::printf(" %8.3f %s\n", target, isMet ? "met" : "MISSED");
    std::fflush(stdout);
    return isMet;
}

bool print(const std::string& name, std::vector<double> values, const double target) {
    std::sort(values.begin(), values.end());
    const double median = values[values.size() / 2];
    const bool isMet = target == NoTarget || median <= target;
    std::printf("%-48s %8.3f %8.3f %8.3f", name.c_str(), median, values.front(), values.back());
    if(target == NoTarget) std::printf(" %8s\n", "-");
    else std::printf(" %8.3f %s\n", target, isMet ? "met" : "MISSED");
    std::fflush(stdout);
    return isMet;
}

bool fail(const std::string& what) {
    std::printf("%-48s %35s MISSED\n", what.c_str(), "");
    return false;
}

double medianRatio(const int pairs, const std::function<double()>& act, const std::function<double()>& base) {
    std::vector<double> ratios;
    ratios.reserve(std::size_t(pairs));
    for(int i = 0; i != pairs; ++i) {
        // Neither is always the one that finds the caches cold.
        const double first = i % 2 ? base() : act();
        const double second = i % 2 ? act() : base();
        ratios.push_back(i % 2 ? second / first : first / second);
    }
    std::nth_element(ratios.begin(), ratios.begin() + pairs / 2, ratios.end());
    return ratios[std::size_t(pairs / 2)];
}

void Measures::take(const std::string& name, const std::vector<Base>& bases, const std::function<void()>& act) {
    double seconds = 0.0;
    if(_isTurned) seconds = secondsOf(act);
    std::vector<double> baseSeconds;
    baseSeconds.reserve(bases.size());
    for(const Base& base: bases) baseSeconds.push_back(base.secondsOf());
    if(!_isTurned) seconds = secondsOf(act);
    for(std::size_t i = 0; i != bases.size(); ++i) {
        // A base that is not there gives no figure.
        if(baseSeconds[i] <= 0.0) continue;
        const std::string whole = name + " / " + bases[i].name;
        const auto at =
            std::find_if(_figures.begin(), _figures.end(), [&](const Figure& one) { return one.name == whole; });
        Figure& figure = at == _figures.end() ? _figures.emplace_back(Figure{whole, bases[i].target, {}}) : *at;
        figure.ratios.push_back(seconds / baseSeconds[i]);
    }
    std::fprintf(stderr, "%-40s %8.1f ms", name.c_str(), seconds * 1000.0);
    for(std::size_t i = 0; i != bases.size(); ++i)
        std::fprintf(stderr, ", %s %.1f ms", bases[i].name.c_str(), baseSeconds[i] * 1000.0);
    std::fprintf(stderr, "\n");
}

bool Measures::printAll() const {
    bool isMet = true;
    for(const Figure& figure: _figures) isMet &= print(figure.name, figure.ratios, figure.target);
    return isMet;
}
