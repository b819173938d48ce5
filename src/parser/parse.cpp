#include "parser/parse.h"

#include <utility>

#include "input/reading.h"
#include "runtime/allocation.h"

namespace qvox {

Parse::Running::Running(Parser& runningParser, InputSource* source) : parser(runningParser) {
    parser.parsing = true;
    parser.inputSource = source;
}

void Parse::Running::stop() { parser.parsing = false; }

Parse::Parse(Parser& parser, InputSource* source, std::unique_ptr<ByteStream> file,
             Events& receiver)
    : running(parser, source),
      document(std::move(file)),
      events(receiver),
      input(*this),
      reports(parser, input),
      reportScope(&reports),
      names(heap),
      dtd(heap, input.expansion, names),
      elements(
          heap, receiver, input.expansion, names,
          {parser.getFeature(FEATURE_NAMESPACES), parser.getFeature(FEATURE_NAMESPACE_PREFIXES)}),
      lexer(heap, input, names, dtd, elements, parser.getFeature(FEATURE_EXTERNAL_FILES)),
      content(heap, input, names, elements, lexer, events, reading_of_thread().byPieces),
      grammar(heap, dtd, elements, lexer, content, events) {}

Parse::~Parse() {
    if (!hasEnded) end();
}

void Parse::run(const char* name, const Unit* memory) {
    input.open_input(name, document.get(), memory);
    grammar.grammar_run();
    running.stop();
    elements.end();
    end();
    lexer.end();
}

void Parse::end() {
    hasEnded = true;
    running.stop();
    if (memstatEnabled) memory_statistics();
}

}  // namespace qvox
