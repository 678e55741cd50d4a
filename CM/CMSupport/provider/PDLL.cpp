#include "CM/CMSupport/provider/PDLL.h"

#include <utility>

PDLL::~PDLL() {
    users_ = 1;
    PDLL::Uninitialize();
}

int PDLL::Initialize(short flag) {
    if (++users_ != 1 || !name_) {
        return 0;
    }
    LoadDll(nullptr, flag);
    return isHeld() ? 1 : 0;
}

void PDLL::Uninitialize() {
    if (users_ == 0 || --users_ > 0) {
        return;
    }
    library_.unload();
    SetDllName(nullptr);
}

int PDLL::SetDllName(const char *name) {
    if (isHeld()) {
        return 0;
    }
    name_ = name == nullptr ? std::nullopt : std::optional<std::string>(name);
    return 1;
}

void PDLL::LoadDll(const char *name, short /*flag*/) {
    if (name != nullptr) {
        SetDllName(name);
    }
    platform::SharedLibrary loaded;
    loadError_.Empty();
    loaded.load(name_.value_or(std::string()), loadError_);
    if (isHeld()) {
        replaced_.push_back(std::move(library_));
    }
    library_ = std::move(loaded);
}
