// Implements the lifetime of the object through which the host reaches the library's services.
#include "CM/host/IBaseCMFacade.h"

IBaseCMFacade::IBaseCMFacade() = default;
IBaseCMFacade::~IBaseCMFacade() = default;
