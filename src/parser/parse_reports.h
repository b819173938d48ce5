// Tells the error handler of a running SAX parse what is being reported, and where.
#pragma once

#include <qvox/parser.h>

#include "input/input.h"
#include "runtime/report.h"

namespace qvox {

class ParseReports final : public ReportListener {
public:
    ParseReports(Parser& runningParser, Input& inputOfParse)
        : parser(runningParser), input(inputOfParse) {}

    void hear(ReportLevel level, QVOXException::Code code, const char* message) override;

private:
    Parser& parser;
    Input& input;
    // What the handler itself causes, such as the refusal of a parse that it starts, isn't told
    // again.
    bool tellingErrorHandler = false;
};

}  // namespace qvox
