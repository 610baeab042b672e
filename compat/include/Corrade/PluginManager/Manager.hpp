#pragma once

#include "Corrade/Containers/Array.h"
#include "Corrade/Containers/String.h"
#include "Corrade/PluginManager/AbstractPlugin.h"
#include "Corrade/PluginManager/Manager.h"

namespace Corrade::PluginManager {

template <class T>
Manager<T>::Manager(Containers::StringView pluginDirectory)
    : AbstractManager(T::pluginInterface(), T::pluginSearchPaths(), T::pluginSuffix(), T::pluginMetadataSuffix(),
          pluginDirectory) {}

template <class T> Manager<T>::Manager(): Manager(Containers::StringView{}) {}

template <class T> Containers::Pointer<T> Manager<T>::instantiate(Containers::StringView plugin) {
    return Containers::pointerCast<T>(instantiateInternal(plugin));
}

template <class T> Containers::Pointer<T> Manager<T>::loadAndInstantiate(Containers::StringView plugin) {
    return Containers::pointerCast<T>(loadAndInstantiateInternal(plugin));
}

} // namespace Corrade::PluginManager
