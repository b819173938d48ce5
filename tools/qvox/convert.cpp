// `qvox convert`: a document in another encoding.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "characters.h"
#include "command.h"
#include "document.h"
#include "escape.h"
#include "literals.h"
#include "result_text.h"
#include "source_file.h"
#include "target_encoding.h"
#include "tree_difference.h"
#include "tree_parse.h"
#include "written_document.h"

namespace {

struct Job {
    std::string fileName;
    const TargetEncoding& encoding;
    bool isLossy;
    std::optional<std::string> outputName;  // standard output without one
};

void complain(const Job& job, const std::string& message) {
    std::fputs(describe(job.fileName, {0, 0, message}).c_str(), stderr);
}

void complain(const Job& job, const SourceFile& source, Failure failure) {
    source.rename(failure.message);
    std::fputs(describe(job.fileName, failure).c_str(), stderr);
}

// A warning tells of a reference that stands for nothing, and so of text that the result won't
// have.
class WarningPrinter final : public qvox::DefaultHandler {
public:
    WarningPrinter(const Job& currentJob, const SourceFile& sourceFile)
        : job(currentJob), source(sourceFile) {}

    void warning(const qvox::SAXParseException& exception) override {
        Failure noted = {exception.getLineNumber(), exception.getColumnNumber(), "warning: "};
        append_message(noted.message, exception.getMessage(), source.path(), Style::PLAIN);
        complain(job, source, noted);
    }

private:
    const Job& job;
    const SourceFile& source;
};

// Whether the document can be read, by a parse of its own, because a parse into a tree tells
// neither the places of errors nor warnings nor literals.
bool is_good(const Job& job, const SourceFile& source, Literals& literals) {
    WarningPrinter printer(job, source);
    qvox::SAXParser parser;
    parser.setErrorHandler(&printer);
    const LiteralRecorder recorder(parser);
    const std::optional<Failure> failure = parse_document(parser, source.path());
    if (failure) complain(job, source, *failure);
    literals = recorder.literals();
    return !failure;
}

void append_shown(std::string& text, char32_t character) {
    const Units units = units_of(character);
    escape_units(text, units.data(), static_cast<int>(units.size()), Style::PLAIN);
}

std::size_t count_of(const Misfits& misfits) {
    std::size_t count = 0;
    for (const auto& [character, lines] : misfits) count += lines.size();
    return count;
}

std::string in_words(std::size_t characters) {
    return std::to_string(characters) + (characters == 1 ? " character" : " characters");
}

// "  U+20BB7 <the character>: lines 3, 7 (4 times)"
std::string in_words(char32_t character, const std::vector<int>& lines) {
    constexpr std::size_t MOST_LINES = 20;
    char number[16];
    std::snprintf(number, sizeof number, "  U+%04X ", static_cast<unsigned>(character));
    std::string text = number;
    append_shown(text, character);

    std::vector<int> distinct;
    std::unique_copy(lines.begin(), lines.end(), std::back_inserter(distinct));
    text += distinct.size() == 1 ? ": line " : ": lines ";
    for (std::size_t i = 0; i < distinct.size() && i <= MOST_LINES; ++i) {
        if (i > 0) text += ", ";
        text += i == MOST_LINES ? "..." : std::to_string(distinct[i]);
    }
    if (lines.size() > distinct.size()) text += " (" + std::to_string(lines.size()) + " times)";
    return text + '\n';
}

void list(const Job& job, const Misfits& misfits) {
    complain(job, "not converted: " + in_words(count_of(misfits)) + ' ' + job.encoding.lack +
                      " (by lines of the result)");
    for (const auto& [character, lines] : misfits) {
        std::fputs(in_words(character, lines).c_str(), stderr);
    }
}

// The result, read again. Says why if that can't be.
OwnedDocument read_again(const Job& job, ResultText& result) {
    try {
        return OwnedDocument(qvox::DOMParser().parse(result.body()));
    } catch (const qvox::QVOXException& exception) {
        std::string message = "not converted: the result couldn't be read: ";
        const qvox::Xstring& reason = exception.getMessage();
        escape_units(message, reason.data(), reason.length(), Style::PLAIN);
        complain(job, message);
        return nullptr;
    }
}

// Whether the result is the same document. Says so if not.
bool comes_back(const Job& job, qvox::Document& original, ResultText& result) {
    const OwnedDocument copy = read_again(job, result);
    if (copy == nullptr) return false;
    const std::string difference = first_difference(original, *copy, [&job](char32_t character) {
        return job.isLossy && !job.encoding.takes(character);
    });
    if (!difference.empty()) {
        complain(job, "not converted: the result would be read otherwise: " + difference);
    }
    return difference.empty();
}

// A written tree has the declarations of its document type, and nothing else of it.
void warn_of_losses(const Job& job, const qvox::Document& document) {
    const qvox::DocumentType* const documentType = document.getDoctype();
    const int count = documentType != nullptr ? documentType->getChildNodes()->getLength() : 0;
    if (count == 0) return;
    complain(job,
             "warning: comments and processing instructions in the document type are left "
             "out (" +
                 std::to_string(count) + ")");
}

ExitStatus put_into_file(const std::string& name, const std::string& bytes) {
    try {
        std::FILE* const stream = std::fopen(name.c_str(), "wb");
        if (stream == nullptr) throw WriteError{errno};
        Output file(stream);
        file.write(bytes);
        file.close();
        return ALL_GOOD;
    } catch (const WriteError& error) {
        std::fputs(describe(name, {0, 0, std::strerror(error.systemCode)}).c_str(), stderr);
        return OUTPUT_FAILED;
    }
}

ExitStatus convert(const Job& job, const SourceFile& source, Output& output) {
    Literals literals;
    if (!is_good(job, source, literals)) return FILE_FAILED;
    Failure failure;
    std::optional<WrittenDocument> document = read_and_write(source.path(), failure);
    if (!document) {
        complain(job, source, failure);
        return FILE_FAILED;
    }
    ResultText result(job.encoding, CONVERTED);
    result.declare(document->declaration);
    result.add(document->body, literals, specified_attributes(*document->tree));
    Units().swap(document->body);

    const Misfits& misfits = result.misfits();
    if (!misfits.empty() && !job.isLossy) {
        list(job, misfits);
        return FILE_FAILED;
    }
    if (!comes_back(job, *document->tree, result)) return FILE_FAILED;
    warn_of_losses(job, *document->tree);
    document.reset();
    if (!misfits.empty()) complain(job, in_words(count_of(misfits)) + " became ?");

    const std::string bytes = job.encoding.encode(result.text());
    if (job.outputName) return put_into_file(*job.outputName, bytes);
    output.write(bytes);
    return ALL_GOOD;
}

ExitStatus convert(const Job& job, Output& output) {
    std::optional<SourceFile> source;
    try {
        source.emplace(job.fileName);
    } catch (const std::system_error& error) {
        complain(job, "no copy of it can be made: " + error.code().message());
        return FILE_FAILED;
    }
    return convert(job, *source, output);
}

}  // namespace

Command add_convert(CLI::App& program) {
    CLI::App* const options = program.add_subcommand(
        "convert", "Write a document in another encoding, declared so that it can be read again");
    const CLI::Option* const target =
        options->add_option("--to", "The encoding")
            ->required()
            ->type_name("ENCODING")
            ->check(CLI::IsMember(target_encoding_names(), CLI::ignore_case));
    const CLI::Option* const outputName =
        options->add_option("-o,--output", "The file to write, instead of standard output")
            ->type_name("OUT");
    const CLI::Option* const lossy = options->add_flag(
        "--lossy", "Write ? for what the encoding doesn't have, instead of refusing the document");
    const CLI::Option* const file = add_file(*options);

    return {options, [=](Output& output) {
                Job job = {given_files(*file).front(), target_encoding(target->as<std::string>()),
                           lossy->count() > 0, std::nullopt};
                if (outputName->count() > 0) job.outputName = given_files(*outputName).front();
                return convert(job, output);
            }};
}
