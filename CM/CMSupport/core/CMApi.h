// Defines ORC_CM_API, which marks the symbols that the shared library exports.
#pragma once

#define ORC_CM_API __attribute__((visibility("default")))
