#pragma once

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Collects the changes of its scope into one undo step. */
class ChangeGroup {
public:
    /** Opens a group.
        @param changes  must outlive the guard; no group may be open there */
    explicit ChangeGroup(ChangeManager& changes);

    /** Commits the group. */
    ~ChangeGroup();

    ChangeGroup(const ChangeGroup&) = delete;
    ChangeGroup& operator=(const ChangeGroup&) = delete;

private:
    ChangeManager* _changes;
};

}
