// ORCHARD_API marks the functions and classes that the reference host offers to programs in addition to the
// interface in CM/host.
#pragma once

#define ORCHARD_API __attribute__((visibility("default")))
