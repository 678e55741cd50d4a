// ORC_HOST_API marks what a host program offers and the library uses: these names are resolved when the
// program is linked, so that any host that defines them can stand behind the headers of this folder.
#pragma once

#define ORC_HOST_API __attribute__((visibility("default")))
