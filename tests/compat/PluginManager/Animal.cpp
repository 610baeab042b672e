// A plug-in that works. ANIMAL is its name, and LEGS the number of its legs.

#include <Corrade/PluginManager/AbstractManager.h>

#include "AbstractAnimal.h"

namespace {

class Animal: public AbstractAnimal {
public:
    using AbstractAnimal::AbstractAnimal;

    static void initialize() { Corrade::Utility::Debug{} << "initialize" << ANIMAL; }
    static void finalize() { Corrade::Utility::Debug{} << "finalize" << ANIMAL; }

    ~Animal() override { Corrade::Utility::Debug{} << "destroy" << ANIMAL; }
    int legs() const override { return LEGS; }
};

} // namespace

CORRADE_PLUGIN_REGISTER(Animal, Animal, "compat.test.AbstractAnimal/1.0")
