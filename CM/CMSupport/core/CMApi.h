// ORC_CM_API marks what the shared library offers to the program that it is part of.
#pragma once

#define ORC_CM_API __attribute__((visibility("default")))
