// What is said of a file that failed, with what helps to mend it.
#pragma once

#include <string>

#include "document.h"
#include "look.h"

// "FILE:LINE:COLUMN: message"; on a terminal the line of the document and a caret below the place;
// "hint: ..." where the cause is known. `path` is where the document can be read again.
std::string report(const std::string& fileName, const std::string& path, const Failure& failure,
                   const Look& look);

// The same on standard error.
void complain(const std::string& fileName, const std::string& path, const Failure& failure);
