// The host's part of the object through which it reaches the library's services: how it begins and ends.
#include "CM/host/IBaseCMFacade.h"

IBaseCMFacade::IBaseCMFacade() = default;
IBaseCMFacade::~IBaseCMFacade() = default;
