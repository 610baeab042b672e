#include "app/FontWatch.h"

namespace QuorvaneEngine {

namespace {

/* In one frame. */
constexpr std::size_t TextsPerStep = 2000;

}

void FontWatch::update(
    ProjectFile& project, const Int revision, const Containers::ArrayView<const UnsignedInt> languages) {
    if(revision != _revision) {
        _revision = revision;
        _coverage.restart(languages);
    } else if(_coverage.isFinished()) return;
    _coverage.advance(project, TextsPerStep);
    if(_coverage.isFinished()) _summary = _coverage.summary();
}

}
