/// \file
/// Events of qvox/easy.h: a document told to functions.
#ifndef QVOX_EASY_READER_H
#define QVOX_EASY_READER_H

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include <qvox/easy/source.h>
#include <qvox/easy/text.h>
#include <qvox/parser.h>
#include <qvox/sax.h>

namespace qvox::easy {

/// A start tag, for as long as on_start() lasts. Names are qualified; texts come out as in node.
class start_tag {
public:
    /// Of the arguments of ContentHandler::startElement, which have to outlive it.
    start_tag(const Xstring& uri, const Xstring& local, const Xstring& qName, const Attributes& all)
        : uriText(uri), localText(local), nameText(qName), attributes(all) {}

    /// The name as it stands in the document.
    std::string name() const { return nameText.utf8(); }
    /// name() in UTF-16.
    std::u16string_view name16() const { return nameText; }
    /// The name without its prefix.
    std::string local_name() const { return localText.utf8(); }
    /// Empty for an element without a namespace.
    std::string namespace_uri() const { return uriText.utf8(); }

    /// Whether there is an attribute of that name.
    bool has(const text& attribute) const { return !value(attribute).isNull(); }
    /// The value of an attribute, or `otherwise` where there is none.
    std::string get(const text& attribute, const std::string& otherwise = {}) const {
        const Xstring& found = value(attribute);
        return found.isNull() ? otherwise : found.utf8();
    }
    /// The value of an attribute in UTF-16; empty where there is none.
    std::u16string_view get16(const text& attribute) const { return value(attribute); }
    /// All of them, in the classic interface.
    const Attributes& classic() const { return attributes; }

private:
    const Xstring& value(const text& attribute) const {
        return attributes.getValue(attributes.getIndex(attribute.get()));
    }

    const Xstring& uriText;
    const Xstring& localText;
    const Xstring& nameText;
    const Attributes& attributes;
};

/// Reads documents and tells the functions that are set; any may be left empty. They may throw:
/// that ends the parse, and what was thrown comes out of it. One object is for one thread at a
/// time, and one of these parses runs at a time in the process, however many readers there are.
class reader {
public:
    /// An element begins; the attributes are those of the tag.
    std::function<void(const start_tag& tag)> on_start;
    /// An element ends; also one without content, `<a/>`.
    std::function<void(const std::string& name)> on_end;
    /// All text between two tags, comments or processing instructions in one piece.
    std::function<void(const std::string& text)> on_text;
    /// A comment, also one in the document type.
    std::function<void(const std::string& text)> on_comment;
    /// A processing instruction; the XML declaration is none.
    std::function<void(const std::string& target, const std::string& data)> on_instruction;
    /// Something that doesn't end the parse.
    std::function<void(const error& warning)> on_warning;
    /// Refused until somebody asks for them.
    external_files external = external_files::refused;

    /// As document::load().
    void read(const std::filesystem::path& file) {
        detail::source from;
        detail::read_file(file, from, [this](auto... what) { run(what...); });
    }
    /// As document::parse().
    void parse(std::string_view bytes) {
        detail::source from;
        detail::read_bytes(bytes, from, [this](auto... what) { run(what...); });
    }

private:
    // A parser for files and for texts in memory.
    class any_parser : public SAXParser {
    public:
        void read(const char* file, const Xstring& memory) {
            InputSource source(file);
            if (file != nullptr) {
                SAXParser::parse(source);
            } else {
                Parser::parse(nullptr, &source, memory.unicode_str(), nullptr);
            }
        }
    };

    class handler : public DefaultHandler, public LexicalHandler {
    public:
        explicit handler(const reader& functions) : to(functions) {}

        void startElement(const Xstring& uri, const Xstring& local, const Xstring& qName,
                          const Attributes& attributes) override {
            tell_text();
            if (to.on_start) to.on_start(start_tag(uri, local, qName, attributes));
        }
        void endElement(const Xstring&, const Xstring&, const Xstring& qName) override {
            tell_text();
            if (to.on_end) to.on_end(qName.utf8());
        }
        void characters(const Xstring& piece) override {
            if (to.on_text) text += piece;
        }
        void ignorableWhiteSpace(const Xstring& piece) override { characters(piece); }
        void processingInstruction(const Xstring& target, const Xstring& data) override {
            tell_text();
            if (to.on_instruction) to.on_instruction(target.utf8(), data.utf8());
        }
        void comment(const Xstring& content) override {
            tell_text();
            if (to.on_comment) to.on_comment(content.utf8());
        }
        void warning(const SAXParseException& place) override {
            if (!to.on_warning) return;
            to.on_warning(easy::error(place.getCode(), place.getMessage().utf8(),
                                      place.getLineNumber(), place.getColumnNumber()));
        }
        void startCDATA() override {}
        void endCDATA() override {}
        void startDTD(const Xstring&, const Xstring&, const Xstring&) override {}
        void endDTD() override {}
        void startEntity(const Xstring&) override {}
        void endEntity(const Xstring&) override {}

    private:
        void tell_text() {
            if (text.length() == 0) return;
            const std::string whole = text.utf8();
            text = "";
            to.on_text(whole);
        }

        const reader& to;
        Xstring text = "";
    };

    void run(const char* file, const Xstring& memory) const {
        handler heard(*this);
        any_parser parser;
        parser.setFeature(FEATURE_EXTERNAL_FILES, external == external_files::allowed);
        parser.setContentHandler(&heard);
        parser.setErrorHandler(&heard);
        parser.setProperty(PROPERTY_LEXICAL_HANDLER, static_cast<LexicalHandler*>(&heard));
        parser.read(file, memory);
    }
};

}  // namespace qvox::easy

#endif
