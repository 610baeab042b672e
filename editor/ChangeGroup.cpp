#include "ChangeGroup.h"

#include "ChangeManager.h"

namespace QuorvaneEngine {

ChangeGroup::ChangeGroup(ChangeManager& changes): _changes{&changes} { changes.openGroup(); }

ChangeGroup::~ChangeGroup() { _changes->commit(); }

}
