#include "orchard/messages/DialogSetup.h"

#include "CM/host/Environment.h"

namespace {

class DriverEnvironment final : public IAbsEnvironmentInterface {
  public:
    platform::DialogDriver *dialogDriver() override { return driver; }
    platform::DialogDriver *driver = nullptr;
};

DriverEnvironment &environment() {
    static DriverEnvironment theEnvironment;
    return theEnvironment;
}

class PlainEnvironment final : public IEnvironmentInterface {};

} // namespace

void orchard::setDialogDriver(platform::DialogDriver *driver) { environment().driver = driver; }
platform::DialogDriver *orchard::dialogDriver() { return environment().driver; }

IAbsEnvironmentInterface *IAbsEnvironmentInterface::CurrentOutputInterface() {
    return CurrentEnvironmentGUIInterface();
}

IAbsEnvironmentInterface *IAbsEnvironmentInterface::CurrentEnvironmentGUIInterface() {
    return environment().driver == nullptr ? nullptr : &environment();
}

IEnvironmentInterface *IEnvironmentInterface::Instance() {
    static PlainEnvironment theEnvironment;
    return &theEnvironment;
}

CWnd *OrpAfxGetMainWnd() { return nullptr; } // a program on a terminal has no window
