// `qvox convert`: a document in another encoding.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <system_error>

#include "command.h"
#include "destination.h"
#include "document.h"
#include "document_reader.h"
#include "document_writer.h"
#include "escape.h"
#include "event_digest.h"
#include "file_report.h"
#include "fitting.h"
#include "markup_lines.h"
#include "misfit_report.h"
#include "source_file.h"
#include "target_encoding.h"
#include "temporary_file.h"

namespace {

struct Job {
    std::string fileName;
    const TargetEncoding& encoding;
    bool isLossy;
    Externals externals;
    std::optional<std::string> outputName;  // standard output without one
};

// Passes a document on to two sinks.
class Tee final : public DocumentSink {
public:
    Tee(DocumentSink& firstSink, DocumentSink& secondSink) : first(firstSink), second(secondSink) {}

    void xmlDeclaration(const XmlDeclaration& declaration) override {
        first.xmlDeclaration(declaration);
        second.xmlDeclaration(declaration);
    }
    void documentType(UnitView text, const Literals& literals) override {
        first.documentType(text, literals);
        second.documentType(text, literals);
    }
    void startElement(UnitView name, const std::vector<Attribute>& attributes) override {
        first.startElement(name, attributes);
        second.startElement(name, attributes);
    }
    void endElement(UnitView name) override {
        first.endElement(name);
        second.endElement(name);
    }
    void text(UnitView text) override {
        first.text(text);
        second.text(text);
    }
    void startCdata() override {
        first.startCdata();
        second.startCdata();
    }
    void endCdata() override {
        first.endCdata();
        second.endCdata();
    }
    void comment(UnitView text) override {
        first.comment(text);
        second.comment(text);
    }
    void processingInstruction(UnitView target, UnitView data) override {
        first.processingInstruction(target, data);
        second.processingInstruction(target, data);
    }

private:
    DocumentSink& first;
    DocumentSink& second;
};

class Conversion {
public:
    Conversion(const Job& currentJob, const SourceFile& sourceFile)
        : job(currentJob), source(sourceFile), way(way_to_read(source.path(), job.externals)) {}

    // Whether the result has been written and is the same document. Complains if not. Throws
    // std::system_error where the file can't be written.
    bool write(TemporaryFile& result);

private:
    bool write(Output output);
    bool writeEvents(DocumentSink& writer);
    bool writeNodes(DocumentSink& writer);
    bool comesBack(const std::string& resultPath);
    std::string differenceIn(std::size_t block, const std::string& resultPath);
    bool takesMisfits(const Misfits& misfits);
    void warnOfLosses(int splitSections);

    void complain(const std::string& message, int line = 0);
    bool complain(Failure failure);

    // A warning tells of a reference that stands for nothing, and so of text that the result won't
    // have.
    class WarningPrinter final : public qvox::DefaultHandler {
    public:
        explicit WarningPrinter(Conversion& ofConversion) : conversion(ofConversion) {}

        void warning(const qvox::SAXParseException& exception) override {
            Failure noted = {exception.getLineNumber(), exception.getColumnNumber(), "warning: "};
            append_message(noted.message, exception.getMessage(), conversion.source.path(),
                           Style::PLAIN);
            conversion.complain(noted);
        }

    private:
        Conversion& conversion;
    };

    const Job& job;
    const SourceFile& source;
    const Way way;
    Findings findings;
    EventDigest digest = EventDigest(job.encoding);
};

void Conversion::complain(const std::string& message, int line) {
    std::fputs(describe(job.fileName, {line, 0, message}).c_str(), stderr);
}

bool Conversion::complain(Failure failure) {
    source.rename(failure.message);
    ::complain(job.fileName, source.originalPath(), failure);
    return false;
}

bool Conversion::write(TemporaryFile& result) {
    try {
        return write(Output(result.stream())) && comesBack(result.path());
    } catch (const WriteError& error) {
        throw std::system_error(error.systemCode, std::generic_category());
    }
}

bool Conversion::write(Output output) {
    DocumentWriter writer(job.encoding, CONVERTED, output);
    Tee both(writer, digest);
    if (way == Way::EVENTS ? !writeEvents(both) : !writeNodes(both)) return false;
    digest.finish();
    writer.finish();
    output.flush();
    return true;
}

bool Conversion::writeEvents(DocumentSink& writer) {
    WarningPrinter warnings(*this);
    int place = 0;
    Fitting fitting(job.encoding, writer, place);
    DisguiseRemover plain(source.mark(), fitting);
    if (auto failure =
            pass_events(source.path(), job.externals, &warnings, plain, place, findings)) {
        return complain(*failure);
    }
    if (!takesMisfits(fitting.misfits())) return false;
    warnOfLosses(fitting.splitSections());
    return true;
}

// Events tell what is to be said of the document, before a tree is made of it.
bool Conversion::writeNodes(DocumentSink& writer) {
    WarningPrinter warnings(*this);
    NullSink nobody;
    int place = 0;
    Fitting check(job.encoding, nobody, place);
    DisguiseRemover plainCheck(source.mark(), check);
    if (auto failure =
            pass_events(source.path(), job.externals, &warnings, plainCheck, place, findings)) {
        return complain(*failure);
    }
    Misfits misfits = check.misfits();
    Fitting fitting(job.encoding, writer, findings.placeOfDocumentType);
    DisguiseRemover plain(source.mark(), fitting);
    if (auto failure = pass_nodes(source.path(), job.externals, findings.literals, plain)) {
        return complain(*failure);
    }
    // What only the tree has comes from declarations.
    const Misfits& declared = fitting.misfits();
    misfits.insert(declared.begin(), declared.end());
    if (!takesMisfits(misfits)) return false;
    warnOfLosses(fitting.splitSections());
    return true;
}

bool Conversion::takesMisfits(const Misfits& misfits) {
    if (misfits.empty()) return true;
    const std::string count = characters_in_words(count_of(misfits));
    if (job.isLossy) {
        complain(count + " became ?");
        return true;
    }
    complain("not converted: " + count + ' ' + job.encoding.lack +
             ", nor be references where they stand");
    std::fputs(list_of(misfits, source.path()).c_str(), stderr);
    return false;
}

// A written document type has its declarations, and nothing else.
void Conversion::warnOfLosses(int splitSections) {
    if (findings.lostMarkup > 0) {
        complain(
            "warning: comments and processing instructions in the document type are left out (" +
            std::to_string(findings.lostMarkup) + ")");
    }
    if (splitSections > 0) {
        complain("warning: CDATA sections are split around characters that become references (" +
                 std::to_string(splitSections) + ")");
    }
    std::vector<int> places;
    for (const auto& repetition : findings.repetitions) places.push_back(repetition.place);
    const std::vector<int> lines = lines_of(places, source.path());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        complain("warning: attribute " + findings.repetitions[i].attribute +
                     " stands twice in a tag, and the first is left out",
                 lines[i]);
    }
}

bool Conversion::comesBack(const std::string& resultPath) {
    EventDigest copy(job.encoding);
    copy.setOriginal(digest);
    if (auto failure = pass_document(resultPath, way, job.externals, copy)) {
        replace_name(failure->message, resultPath, "the result");
        complain("not converted: the result couldn't be read: " + failure->message);
        return false;
    }
    copy.finish();
    const std::ptrdiff_t block = first_different_block(digest, copy);
    if (block < 0) return true;
    complain("not converted: the result would be read otherwise: " +
             differenceIn(static_cast<std::size_t>(block), resultPath));
    return false;
}

// Both documents are read once more for the words.
std::string Conversion::differenceIn(std::size_t block, const std::string& resultPath) {
    EventDigest original(job.encoding);
    EventDigest copy(job.encoding);
    copy.setOriginal(digest);
    original.keep(block);
    copy.keep(block);
    const int place = 0;
    Fitting fitting(job.encoding, original, place);
    DisguiseRemover plain(source.mark(), fitting);
    pass_document(source.path(), way, job.externals, plain);
    pass_document(resultPath, way, job.externals, copy);
    original.finish();
    copy.finish();
    return first_difference(original, copy);
}

ExitStatus convert(const Job& job, const SourceFile& source, Output& output) {
    Conversion conversion(job, source);
    try {
        const Destination destination(job.outputName);
        TemporaryFile result(destination.workshop());
        if (!conversion.write(result)) return FILE_FAILED;
        result.close();
        destination.deliver(result, output);
        return ALL_GOOD;
    } catch (const std::system_error& error) {
        const std::string name = job.outputName.value_or("standard output");
        std::fputs(describe(name, {0, 0, error.code().message()}).c_str(), stderr);
        return OUTPUT_FAILED;
    }
}

ExitStatus convert(const Job& job, Output& output) {
    std::optional<SourceFile> source;
    try {
        source.emplace(job.fileName, SourceFile::ALL_OF_UTF8);
    } catch (const std::system_error& error) {
        std::fputs(
            describe(job.fileName, {0, 0, "no copy of it can be made: " + error.code().message()})
                .c_str(),
            stderr);
        return FILE_FAILED;
    }
    return convert(job, *source, output);
}

// Empty, or what is wrong with the name of an encoding.
std::string complaint_about_encoding(const std::string& name) {
    if (target_encoding(name) != nullptr) return {};
    return name + " is none of " + target_encoding_names();
}

}  // namespace

Command add_convert(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "convert", "Write a document in another encoding, declared so that it can be read again");
    options->footer(
        "Examples:\n"
        "  qvox convert --to EUC-JP -o order-euc.xml order.xml\n"
        "  qvox convert --to sjis order.xml >order-sjis.xml\n"
        "  qvox convert --to utf8 -o order.xml order.xml   in place: all of it or nothing");
    const CLI::Option* const target = options->add_option("--to")
                                          ->description("The encoding: " + target_encoding_names())
                                          ->required()
                                          ->type_name("ENCODING")
                                          ->check(complaint_about_encoding);
    const CLI::Option* const outputName =
        options->add_option("-o,--output", "The file to write, instead of standard output")
            ->type_name("OUT");
    const CLI::Option* const lossy = options->add_flag(
        "--lossy", "Write ? for what the encoding doesn't have, instead of refusing the document");
    const CLI::Option* const noExternal = add_no_external(*options);
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) {
                Job job = {given_files(*file).front(), *target_encoding(target->as<std::string>()),
                           lossy->count() > 0, externals_of(*noExternal), std::nullopt};
                if (outputName->count() > 0) job.outputName = given_files(*outputName).front();
                return convert(job, output);
            }};
}
