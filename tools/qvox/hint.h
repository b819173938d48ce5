// What a known cause of a failure is, and what helps.
#pragma once

#include <string>

#include "document.h"

// Empty where the cause isn't known.
std::string hint_for(const Failure& failure, const std::string& path);
