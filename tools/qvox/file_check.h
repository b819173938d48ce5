// The check of one file, apart from all others.
#pragma once

#include <string>

#include "file_report.h"

struct CheckOptions {
    bool isVerbose = false;
    bool showsWarnings = false;
    bool isStrict = false;  // a warning makes a file a bad one
    bool opensExternals = true;
};

struct CheckOutcome {
    bool isGood = true;
    std::string text;  // for standard output
};

// Reads the file and tells what there is to be told of it. Has no other effect, so that it may run
// on any thread.
CheckOutcome check_file(const std::string& fileName, const CheckOptions& options, const Look& look);
