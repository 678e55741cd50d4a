#include "CM/CMSupport/provider/PDLL.h"

#include <utility>

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
    library_ = std::move(loaded); // gives the earlier one back only now, so that it stays where it is in memory
}
