#include "event_printer.h"

#include "document.h"
#include "escape.h"

void EventPrinter::attach(qvox::SAXParser& parser) {
    parser.setContentHandler(this);
    parser.setDTDHandler(this);
    parser.setErrorHandler(this);
    parser.setProperty(qvox::PROPERTY_LEXICAL_HANDLER, static_cast<qvox::LexicalHandler*>(this));
    parser.setProperty(qvox::PROPERTY_DECL_HANDLER, static_cast<qvox::DeclHandler*>(this));
}

void EventPrinter::characters(const Text& text) { print("characters", {{"text", text}}); }

void EventPrinter::endDocument() { print("endDocument"); }

void EventPrinter::endElement(const Text& uri, const Text& localName, const Text& qName) {
    print("endElement", {{"uri", uri}, {"localName", localName}, {"qName", qName}});
}

void EventPrinter::endPrefixMapping(const Text& prefix) {
    print("endPrefixMapping", {{"prefix", prefix}});
}

void EventPrinter::ignorableWhiteSpace(const Text& text) {
    print("ignorableWhiteSpace", {{"text", text}});
}

void EventPrinter::processingInstruction(const Text& target, const Text& data) {
    print("processingInstruction", {{"target", target}, {"data", data}});
}

void EventPrinter::skippedEntity(const Text& name) { print("skippedEntity", {{"name", name}}); }

void EventPrinter::startDocument() { print("startDocument"); }

void EventPrinter::startElement(const Text& uri, const Text& localName, const Text& qName,
                                const qvox::Attributes& attributes) {
    line = "startElement";
    for (const Argument& argument :
         Arguments{{"uri", uri}, {"localName", localName}, {"qName", qName}}) {
        append(argument);
    }
    for (int i = 0; i < attributes.getLength(); ++i) {
        line += " [";
        for (const Argument& argument : Arguments{{"uri", attributes.getURI(i)},
                                                  {"localName", attributes.getLocalName(i)},
                                                  {"qName", attributes.getQName(i)},
                                                  {"type", attributes.getType(i)},
                                                  {"value", attributes.getValue(i)}}) {
            append(argument);
        }
        line += ']';
    }
    endLine();
}

void EventPrinter::startPrefixMapping(const Text& prefix, const Text& uri) {
    print("startPrefixMapping", {{"prefix", prefix}, {"uri", uri}});
}

void EventPrinter::notationDecl(const Text& name, const Text& publicId, const Text& systemId) {
    print("notationDecl", {{"name", name}, {"publicId", publicId}, {"systemId", systemId}});
}

void EventPrinter::unparsedEntityDecl(const Text& name, const Text& publicId, const Text& systemId,
                                      const Text& notationName) {
    print("unparsedEntityDecl", {{"name", name},
                                 {"publicId", publicId},
                                 {"systemId", systemId},
                                 {"notationName", notationName}});
}

void EventPrinter::comment(const Text& text) { print("comment", {{"text", text}}); }

void EventPrinter::endCDATA() { print("endCDATA"); }

void EventPrinter::endDTD() { print("endDTD"); }

void EventPrinter::endEntity(const Text& name) { print("endEntity", {{"name", name}}); }

void EventPrinter::startCDATA() { print("startCDATA"); }

void EventPrinter::startDTD(const Text& name, const Text& publicId, const Text& systemId) {
    print("startDTD", {{"name", name}, {"publicId", publicId}, {"systemId", systemId}});
}

void EventPrinter::startEntity(const Text& name) { print("startEntity", {{"name", name}}); }

void EventPrinter::attributeDecl(const Text& elementName, const Text& attributeName,
                                 const Text& type, const Text& valueDefault, const Text& value) {
    print("attributeDecl", {{"elementName", elementName},
                            {"attributeName", attributeName},
                            {"type", type},
                            {"valueDefault", valueDefault},
                            {"value", value}});
}

void EventPrinter::elementDecl(const Text& name, const Text& model) {
    print("elementDecl", {{"name", name}, {"model", model}});
}

void EventPrinter::externalEntityDecl(const Text& name, const Text& publicId,
                                      const Text& systemId) {
    print("externalEntityDecl", {{"name", name}, {"publicId", publicId}, {"systemId", systemId}});
}

void EventPrinter::internalEntityDecl(const Text& name, const Text& value) {
    print("internalEntityDecl", {{"name", name}, {"value", value}});
}

void EventPrinter::error(const qvox::SAXParseException& exception) {
    printReport("error", exception);
}

void EventPrinter::fatalError(const qvox::SAXParseException& exception) {
    printReport("fatalError", exception);
    output.flush();  // the process is about to end
}

void EventPrinter::warning(const qvox::SAXParseException& exception) {
    printReport("warning", exception);
}

void EventPrinter::print(const char* event, Arguments arguments) {
    line = event;
    for (const Argument& argument : arguments) append(argument);
    endLine();
}

void EventPrinter::printReport(const char* event, const qvox::SAXParseException& exception) {
    line = event;
    line += " code=" + std::to_string(exception.getCode());
    line += " line=" + std::to_string(exception.getLineNumber());
    line += " column=" + std::to_string(exception.getColumnNumber());
    line += " message=\"";
    append_message(line, exception.getMessage(), fileName, Style::QUOTED);
    line += '"';
    endLine();
}

// Behind the bracket of an attribute no blank is needed.
void EventPrinter::append(const Argument& argument) {
    if (line.back() != '[') line += ' ';
    line += argument.name;
    line += '=';
    quote(line, argument.value);
}

void EventPrinter::endLine() {
    line += '\n';
    output.write(line);
}
