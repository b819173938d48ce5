/// \file
/// The parsers.
#ifndef QVOX_PARSER_H
#define QVOX_PARSER_H

#include <qvox/exception.h>
#include <qvox/export.h>
#include <qvox/sax.h>

namespace qvox {

class Document;
class ParserImpl;

/// \name Features
/// Identifiers for getFeature and setFeature (SAX2). None can be changed during a parse.
/// @{

/// Namespace processing; true at first. While false, names have no URI and no local part, and
/// prefix mappings are not reported.
inline constexpr const char* FEATURE_NAMESPACES = "http://xml.org/sax/features/namespaces";
/// Whether `xmlns` attributes are among the attributes of a tag; false at first in a SAXParser.
inline constexpr const char* FEATURE_NAMESPACE_PREFIXES =
    "http://xml.org/sax/features/namespace-prefixes";
/// Always false, and can't be set: the parsers don't validate.
inline constexpr const char* FEATURE_VALIDATION = "http://xml.org/sax/features/validation";
/// Stored and answered, without effect: external entities are read.
inline constexpr const char* FEATURE_EXTERNAL_GENERAL_ENTITIES =
    "http://xml.org/sax/features/external-general-entities";
/// \copydoc FEATURE_EXTERNAL_GENERAL_ENTITIES
inline constexpr const char* FEATURE_EXTERNAL_PARAMETER_ENTITIES =
    "http://xml.org/sax/features/external-parameter-entities";
/// @}

/// \name Properties
/// Identifiers for getProperty and setProperty (SAX2), which may be used during a parse too.
/// @{

/// A `LexicalHandler*`. Pass a pointer of exactly that type.
inline constexpr const char* PROPERTY_LEXICAL_HANDLER =
    "http://xml.org/sax/handlers/LexicalHandler";
/// A `DeclHandler*`. Pass a pointer of exactly that type.
inline constexpr const char* PROPERTY_DECL_HANDLER = "http://xml.org/sax/handlers/DeclHandler";
/// Known, but neither readable nor writable.
inline constexpr const char* PROPERTY_DOM_NODE = "http://www.w3.org/dom/Node";
/// @}

/// What the parsers have in common: features, and the run of a parse.
///
/// A parser can parse any number of documents, one after the other, also after a failure; features
/// and handlers stay set. Parsers can be made, used and destroyed on any thread, but one
/// process-wide lock lets one parse run at a time: a second one waits, without time-out. One parser
/// object is for one thread at a time.
///
/// A parse accepts UTF-8, UTF-16 with or without byte order mark, and by its XML declaration
/// Shift_JIS, EUC-JP and ISO-2022-JP. It doesn't validate. It ends at the first error with a
/// QVOXException; every warning and error is also a line on standard output. These bounds hold, and
/// passing one is an error of the document like any other:
///  - open elements: close to 5000;
///  - inputs open at a time (files and entity texts inside each other): 1024;
///  - replacement text of entities: up to 16,777,216 units without condition, beyond that at most
///    100 times the bytes read from files (the units of a document in memory).
/// Names, values, comments and texts may be as long as memory allows.
class QVOX_API Parser {
public:
    enum Type { SAX_PARSER = 0, DOM_PARSER = 1 };

    Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// The value of a feature. Raises SAXNotRecognizedException for a name that is no feature, and
    /// SAXNotSupportedException for one that can't be read now.
    bool getFeature(const char* name) const;
    /// Raises SAXNotRecognizedException for a name that is no feature, and SAXNotSupportedException
    /// for one that can't be set, or not during a parse.
    void setFeature(const char* name, bool value);

    /// Whether this object has a document open: true for a handler of a running parse.
    bool isParsing() const noexcept { return parsing; }
    /// The source of the running parse, null for a document in memory. Meaningless outside a parse.
    InputSource* getInputSource() const noexcept { return inputSource; }

    virtual Type getType() const = 0;

protected:
    /// Not virtual: a parser is destroyed as what it is.
    ~Parser();

    void parse(const char* fileName, InputSource* source, unsigned short* memory,
               Document** document);

    ParserImpl* impl;

private:
    friend class ParseRun;

    bool parsing;
    InputSource* inputSource;
};

/// Reads a document and reports it to handlers (SAX2). No handler is required.
class QVOX_API SAXParser : public XMLReader, public Parser {
public:
    SAXParser() = default;
    ~SAXParser() = default;

    ContentHandler* getContentHandler() const override;
    DTDHandler* getDTDHandler() const override;
    EntityResolver* getEntityResolver() const override;
    ErrorHandler* getErrorHandler() const override;
    /// \copydoc Parser::getFeature
    bool getFeature(const char* name) const override;
    /// The handler stored under the property, as its own pointer type, or null. Raises
    /// SAXNotRecognizedException for a name that is no property, and SAXNotSupportedException for
    /// one that can't be read.
    void* getProperty(const char* name) const override;
    /// Parses the file named by the source's system identifier, which must be a file name; `source`
    /// is read during the call only. Raises QVOXException, of exactly this class, for a file that
    /// can't be opened (FILE_OPEN_ERR), for every error of the document, for an exception of the
    /// family that a handler throws, and for a call from inside a handler (INTERNAL_ERR).
    /// Other exceptions of handlers end the parse too and pass through as they are.
    void parse(InputSource& source) override;
    /// The same for a file name in Shift_JIS.
    void parse(const char* systemId) override;
    void setContentHandler(const ContentHandler* handler) override;
    void setDTDHandler(const DTDHandler* handler) override;
    void setEntityResolver(const EntityResolver* resolver) override;
    void setErrorHandler(const ErrorHandler* handler) override;
    /// \copydoc Parser::setFeature
    void setFeature(const char* name, bool value) override;
    /// Stores a handler under a property, also during a parse; null takes it away. Raises the
    /// exceptions of getProperty.
    void setProperty(const char* name, const void* value) override;

    Type getType() const override { return SAX_PARSER; }

private:
    ContentHandler* contentHandler = nullptr;
    DTDHandler* dtdHandler = nullptr;
    EntityResolver* entityResolver = nullptr;
    ErrorHandler* errorHandler = nullptr;
    LexicalHandler* lexicalHandler = nullptr;
    DeclHandler* declHandler = nullptr;
};

}  // namespace qvox

#endif
