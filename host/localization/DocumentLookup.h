#pragma once

#include <Corrade/Containers/Pointer.h>
#include <Corrade/Containers/StringView.h>

#include "QuorvaneEditor/Host.h"

namespace QuorvaneEngine {

/** Finds values of a document that nobody changes meanwhile, with indexes of its own: so it may be used beside the thread that
    the project belongs to. One thread at a time. */
class QUORVANE_API DocumentLookup {
public:
    /** @param root     must outlive this object, and stay as it is */
    explicit DocumentLookup(const rapidjson::Value& root);
    ~DocumentLookup();
    DocumentLookup(const DocumentLookup&) = delete;
    DocumentLookup& operator=(const DocumentLookup&) = delete;

    /** The value at a JSON Pointer (RFC 6901), null where there is none or the path is no pointer. */
    const rapidjson::Value* find(Containers::StringView path);

private:
    struct Data;

    Containers::Pointer<Data> _data;
};

/** The member of an object by comparing one name after another, null where there is none, and for what is null or no object. */
QUORVANE_API const rapidjson::Value* memberOf(const rapidjson::Value* object, Containers::StringView name);

}
