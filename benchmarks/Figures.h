#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

/* For a figure that is only looked at. */
constexpr double NoTarget = -1.0;

template <class Act> double secondsOf(Act&& act) {
    const auto begin = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/* Prints a line with a value.
   @param target    the most that it may be, or NoTarget
   @return whether it is met */
bool print(const std::string& name, double value, double target);

/* Prints a line with the median, the lowest and the highest of values.
   @param target    the most that the median may be, or NoTarget
   @return whether it is met */
bool print(const std::string& name, std::vector<double> values, double target);

/* Prints a line that says that something went wrong.
   @return false */
bool fail(const std::string& what);

/* The ratio of two times that are taken in turns: the median of pairs, because a shared machine is slower from one second to the
   next.
   @param base      returns seconds, as @p act does */
double medianRatio(int pairs, const std::function<double()>& act, const std::function<double()>& base);

/* What is compared with, by its name. */
struct Base {
    std::string name;
    double target;
    std::function<double()> secondsOf;
};

/* Ratios of times that are taken in turns, and in rounds. */
class Measures {
public:
    /* Takes the time of something and of what it is compared with, in the order that this round has: neither is always the one that
       finds the caches cold. A base that takes no time is not there, and gives no figure. */
    void take(const std::string& name, const std::vector<Base>& bases, const std::function<void()>& act);

    /* Turns the order round. */
    void turn() { _isTurned = !_isTurned; }

    /* @return whether all targets are met */
    bool printAll() const;

private:
    struct Figure {
        std::string name;
        double target;
        std::vector<double> ratios;
    };

    std::vector<Figure> _figures;
    bool _isTurned = false;
};
