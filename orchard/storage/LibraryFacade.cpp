#include "orchard/storage/LibraryFacade.h"

namespace orchard {

namespace {

IBaseCMFacade *&facadeInForce() {
    static IBaseCMFacade *facade = nullptr;
    return facade;
}

} // namespace

void setCMFacade(IBaseCMFacade *facade) { facadeInForce() = facade; }

IBaseCMFacade *cmFacade() { return facadeInForce(); }

} // namespace orchard
