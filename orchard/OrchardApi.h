// ORCHARD_API marks what the reference host offers to programs beyond the host's interface.
#pragma once

#define ORCHARD_API __attribute__((visibility("default")))
