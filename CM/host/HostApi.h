// Defines ORC_HOST_API, which marks the names that a host defines and the library uses. They are resolved when
// the program is linked, so that any host that defines them can implement the headers of this folder.
#pragma once

#define ORC_HOST_API __attribute__((visibility("default")))
