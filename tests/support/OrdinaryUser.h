#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace QuorvaneEngine::Test {

/** Permissions do not bind the superuser, who becomes somebody else while the object lives. */
class OrdinaryUser {
public:
    /** @param folder   goes to that user, with all that is in it */
    explicit OrdinaryUser(const std::string& folder) {
        if(geteuid() != 0) return;
        constexpr uid_t Nobody = 65534;
        for(const auto& entry: std::filesystem::recursive_directory_iterator{folder})
            isOrdinary = isOrdinary && chown(entry.path().c_str(), Nobody, gid_t(-1)) == 0;
        isOrdinary = isOrdinary && chown(folder.c_str(), Nobody, gid_t(-1)) == 0 && setresuid(Nobody, Nobody, 0) == 0;
        _isChanged = isOrdinary;
    }
    ~OrdinaryUser() {
        if(_isChanged && setresuid(0, 0, 0) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    /** Whether it worked, or there was no need. */
    bool isOrdinary = true;

private:
    bool _isChanged = false;
};

}
