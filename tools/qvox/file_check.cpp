#include "file_check.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <vector>

#include <qvox/qvox.h>

#include "document.h"
#include "markup_checker.h"
#include "markup_lines.h"
#include "source_file.h"
#include "source_units.h"

namespace {

class FileCheck {
public:
    FileCheck(const std::string& nameOfFile, const CheckOptions& checkOptions, const Look& textLook)
        : fileName(nameOfFile), options(checkOptions), look(textLook), source(nameOfFile) {}

    CheckOutcome run();

private:
    // Warnings in the order of their lines.
    class WarningRecorder final : public qvox::DefaultHandler {
    public:
        explicit WarningRecorder(FileCheck& ofCheck) : check(ofCheck) {}

        void warning(const qvox::SAXParseException& exception) override {
            Failure warning = {exception.getLineNumber(), exception.getColumnNumber(), "warning: "};
            append_message(warning.message, exception.getMessage(), check.source.path(),
                           Style::PLAIN);
            check.warnings.push_back(warning);
        }

    private:
        FileCheck& check;
    };

    void addFindings(const MarkupChecker& checker);
    std::string text(Failure failure) const;
    std::string praise(const MarkupChecker& checker) const;

    const std::string& fileName;
    const CheckOptions& options;
    const Look& look;
    const SourceFile source;
    std::vector<Failure> warnings;
};

CheckOutcome FileCheck::run() {
    int place = 0;
    MarkupChecker checker(place);
    WarningRecorder recorder(*this);
    qvox::SAXParser parser;
    parser.setFeature(qvox::FEATURE_CONCURRENT, true);
    const bool looksForWarnings = options.showsWarnings || options.isStrict;
    if (looksForWarnings || options.isVerbose) checker.attach(parser);
    if (looksForWarnings) parser.setErrorHandler(&recorder);
    parser.setFeature(qvox::FEATURE_EXTERNAL_FILES, options.opensExternals);
    const std::optional<Failure> failure = parse_document(parser, source.path());

    if (looksForWarnings) addFindings(checker);
    CheckOutcome outcome;
    for (const Failure& warning : warnings) outcome.text += text(warning);
    if (failure) outcome.text += text(*failure);
    outcome.isGood = !failure && (warnings.empty() || !options.isStrict);
    if (outcome.isGood && options.isVerbose) outcome.text += praise(checker);
    return outcome;
}

void FileCheck::addFindings(const MarkupChecker& checker) {
    std::vector<int> places;
    for (const auto& finding : checker.findings()) places.push_back(finding.place);
    const std::vector<int> lines = lines_of(places, source.path());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        warnings.push_back({lines[i], 0, "warning: " + checker.findings()[i].message});
    }
    std::stable_sort(warnings.begin(), warnings.end(),
                     [](const Failure& a, const Failure& b) { return a.line < b.line; });
}

std::string FileCheck::text(Failure failure) const {
    source.rename(failure.message);
    return report(fileName, source.path(), failure, look);
}

std::string FileCheck::praise(const MarkupChecker& checker) const {
    const long elements = checker.elements();
    return describe(fileName,
                    {0, 0,
                     "ok (" + encoding_of(source.path()) + ", root " + checker.root() + ", " +
                         std::to_string(elements) + (elements == 1 ? " element)" : " elements)")});
}

}  // namespace

CheckOutcome check_file(const std::string& fileName, const CheckOptions& options,
                        const Look& look) {
    try {
        return FileCheck(fileName, options, look).run();
    } catch (const std::system_error& error) {
        return {false,
                describe(fileName, {0, 0, "no copy of it can be made: " + error.code().message()})};
    }
}
