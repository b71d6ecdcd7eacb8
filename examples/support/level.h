// The level that the library works at.
#pragma once

#include <string>

// Whether this program can choose it (it is otherwise the highest that the processor allows).
bool canChooseLevel();

// False: there is no such level.
bool chooseLevel(const std::string& name);
