#include "TermMark.h"

#include <algorithm>

namespace QuorvaneEngine {

void TermMark::want(const Containers::StringView token) {
    _token = Containers::String{token};
    _isWanted = true;
    _end = 0.0;
}

void TermMark::settle(const bool isThere, const double now) {
    _isWanted = false;
    if(isThere) _end = now + Duration;
}

float TermMark::strength(const Containers::StringView token, const double now) const {
    if(now >= _end || token != _token) return 0.0f;
    return float(std::min((_end - now) / FadeDuration, 1.0));
}

}
