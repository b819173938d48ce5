/// \file
/// The parsers.
#ifndef QVOX_PARSER_H
#define QVOX_PARSER_H

#include <qvox/exception.h>
#include <qvox/export.h>
#include <qvox/sax.h>

namespace qvox {

class Document;
class DOMImplementation;
class Node;
class NodeList;
class Parse;
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
/// The same for parameter entities and the external subset.
inline constexpr const char* FEATURE_EXTERNAL_PARAMETER_ENTITIES =
    "http://xml.org/sax/features/external-parameter-entities";
/// Whether files other than the document are opened: external subsets and entities; true at first.
/// While false, a reference to one is a warning, as with a file that can't be opened. A program
/// that takes documents from strangers sets it to false: a document names the files that are opened
/// for it, with this program's rights. (Our own.)
inline constexpr const char* FEATURE_EXTERNAL_FILES = "urn:qvox:features:external-files";
/// Whether this parser's parses run beside all others, without the process-wide lock; false at
/// first. Such a parse may be started from a handler of another parser's parse. (Our own.)
inline constexpr const char* FEATURE_CONCURRENT = "urn:qvox:features:concurrent";
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
/// and handlers stay set. Parsers can be made, used and destroyed on any thread; one parser object
/// is for one thread at a time. One process-wide lock lets one parse run at a time: a second one
/// waits, without time-out. The parses of a parser whose FEATURE_CONCURRENT is true neither take
/// that lock nor wait for it: they run beside all others.
///
/// A parse accepts UTF-8 (ASCII and three-byte characters), UTF-16 with a byte order mark or
/// beginning with "<?", and by its XML declaration Shift_JIS, EUC-JP and ISO-2022-JP. A file of
/// fewer than four bytes is refused. It doesn't validate. It ends at the first error with a
/// QVOXException; every warning and error is also a line of the report output, which is standard
/// output or what setReportOutput() made it. These bounds hold, and passing one is an error of the
/// document like any other:
///  - open elements: close to 5000;
///  - inputs open at a time (files and entity texts inside each other): 1024;
///  - replacement text of entities: up to 16,777,216 units without condition, beyond that at most
///    100 times the bytes read from files (the units of a document in memory). What else makes much
///    of little counts with it, in units: an external entity that is opened, 128, and from its
///    second reading on its bytes too; a declared default that a tag takes, 8 and those of its name
///    and value; a definition that a further attribute-list declaration of the same element
///    repeats, 64 and those of its name, type and value; a warning of an entity or file that isn't
///    there, 256 and those of the name; one of a declaration that is there already, 256.
/// Names, values, comments and texts may be as long as memory allows.
///
/// Memory that can't be had ends in one of two ways. Where the library takes it with `malloc` (the
/// heap of a parse, nodes, and the arrays in which a tree has them) it ends the process, with a
/// "fatal error" line of the report output, and no call returns. All else is taken with `operator
/// new`, and its std::bad_alloc passes through the call: through the parses, the writes, the making
/// of parsers and documents, and every operation on trees, ranges and walks but the freeing ones,
/// which take none. It leaves no allocation, no open file and no lock behind; a failed parse leaves
/// no tree, a failed write what it had written, and a failed operation on a tree may be done in
/// part, with every node where it was or where it goes. The parser, the document and the process
/// can be used further.
class QVOX_API Parser {
public:
    /// What getType answers.
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

    /// Which of the two parsers this is.
    virtual Type getType() const = 0;

protected:
    /// Not virtual: a parser is destroyed as what it is.
    ~Parser();

    /// The run of a parse, of a file or of a document in memory.
    void parse(const char* fileName, InputSource* source, unsigned short* memory,
               Document** document);

    ParserImpl* impl;  ///< features and what else outlives a parse

private:
    friend class Parse;

    bool parsing;
    InputSource* inputSource;
};

/// Reads a document and reports it to handlers (SAX2). No handler is required.
class QVOX_API SAXParser : public XMLReader, public Parser {
public:
    SAXParser() = default;
    ~SAXParser() = default;

    /// Null for none.
    ContentHandler* getContentHandler() const override;
    /// Null for none.
    DTDHandler* getDTDHandler() const override;
    /// Null for none.
    EntityResolver* getEntityResolver() const override;
    /// Null for none.
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
    /// Stays the caller's; null takes it away. The next event sees the new one.
    void setContentHandler(const ContentHandler* handler) override;
    /// Stays the caller's; null takes it away. The next event sees the new one.
    void setDTDHandler(const DTDHandler* handler) override;
    /// Stays the caller's; null takes it away. The next event sees the new one.
    void setEntityResolver(const EntityResolver* resolver) override;
    /// Stays the caller's; null takes it away. The next event sees the new one.
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

/// Reads a document into a tree (DOM Level 2), writes trees, and frees what callers own. Text of
/// entities stands in the tree where the references were. Warnings of a parse are lines of the
/// report output only; takeErrorPlace() tells where an error is.
class QVOX_API DOMParser : public Parser {
public:
    /// With FEATURE_NAMESPACE_PREFIXES true, so that trees have their `xmlns` attributes.
    DOMParser();
    ~DOMParser() = default;

    /// The document in the file named by the source's system identifier. It is the caller's, to be
    /// freed with free(), and doesn't depend on the parser. Raises QVOXException as
    /// SAXParser::parse does; a failed parse leaves no tree.
    Document* parse(InputSource& source);
    /// The same for a file name in Shift_JIS.
    Document* parse(const char* fileName);
    /// The same for a document in memory: 16-bit units up to a NUL, which stay the caller's and
    /// must not be declared as anything but "UTF-16". An external subset is not read.
    Document* parse(unsigned short* text);

    /// A new, empty document, the caller's.
    Document* createDocument();
    /// The one implementation of the process.
    DOMImplementation* getImplementation() const;

    /// \name Writing
    /// A tree as markup, as it stands, in UTF-16, Shift_JIS or EUC-JP; the tree is not changed. In
    /// text and attribute values `<`, `>`, `&` and both quotes become references; nothing else is
    /// escaped. An entity reference is written as one. All declarations of a document type, those
    /// of its external subset too, stand in its brackets; its comments and processing instructions
    /// are left out.
    ///
    /// The XML declaration is the first child if that is a processing instruction "xml". Where the
    /// output has to be declared in another encoding it is written with that name; a document
    /// without a declaration is written without one.
    ///
    /// What comes out can be read again, but for these:
    ///  - a character that the encoding doesn't have, which becomes `?`, and in the two narrow ones
    ///    U+00A5 and U+203E, which become a backslash and `~`;
    ///  - in a file, what the reader refuses there: surrogates in UTF-16, also in pairs, U+FFFE,
    ///    U+FFFF, and characters below U+0020 other than white space. From memory they are read;
    ///  - in a file, a carriage return, which comes back as a line feed; in an attribute value a
    ///    carriage return, a line feed and a tab come back as blanks, from memory too;
    ///  - `]]>` in text, which is refused in any form, and names that the reader doesn't accept;
    ///  - a double quote in an entity's value, an attribute's default or an identifier, `&` in such
    ///    a value or default, and `%` in such a value: refused, or taken for markup;
    ///  - a node among the attributes of an element that is no attribute.
    ///
    /// Data that a caller has put into comments, processing instructions and CDATA sections is not
    /// looked at. Attributes that the document type supplied come back as specified ones. An
    /// attribute-list declaration repeats the earlier ones of its element. A document type with a
    /// system identifier has the declarations of its subset twice in effect, and the second reading
    /// warns of them.
    ///
    /// Several threads may write one tree; it must not change meanwhile. Depth costs no stack. All
    /// raise QVOXException FILE_WRITE_ERR for a null document and for output that can't be written,
    /// and FILE_OPEN_ERR for a file that can't be opened; a file that was begun is closed and stays
    /// as far as it got.
    /// @{

    /// Writes a file in the encoding that the declaration names. Any name but "UTF-16", "Shift_JIS"
    /// and "EUC-JP", in any case, and none at all give Shift_JIS, undeclared: then only ASCII can
    /// be read again. A file in UTF-16 has a byte order mark and the machine's byte order. A line
    /// feed in the tree becomes CR LF.
    ///
    /// A null file name writes Shift_JIS to standard output, for people to read: markup that
    /// doesn't follow text stands on a line of its own, indented by two blanks for each open
    /// element, and a line break stands in front and at the end.
    void write(Document* document, const char* fileName);
    /// The same in the encoding of that name, with that name in the declaration: in the place of
    /// the one that is there, else at its end, where behind `standalone` the parsers refuse it. A
    /// null name is the declared one; a null file name is a file that can't be opened.
    void write(Document* document, const char* fileName, const char* encoding);
    /// Writes UTF-16 into memory, declared as such, without a mark and with line feeds as they are.
    /// `*length` is the size of the buffer in bytes; what doesn't fit is left out, and the
    /// terminating NUL too if it doesn't. For a null buffer `*length` becomes the size that the
    /// text and its NUL need; more than an int can hold is a FILE_WRITE_ERR, as is a buffer with a
    /// null `length`. Nothing happens where both are null.
    void write(Document* document, unsigned short* buffer, int* length);
    /// @}

    /// Frees a document with all that is attached to it, its search results, and nodes that nobody
    /// else could free. Ranges, iterators and walkers on it have to be freed before. Null is
    /// ignored.
    void free(Document* document);
    /// Frees a node without parent, with all that hangs from it. Raises QVOXException FREE_ERR for
    /// a node with a parent. Null is ignored.
    void freeNode(Node* node);
    /// Frees the result list of a search. Raises QVOXException FREE_ERR for any other list.
    void free(NodeList* list);

    Type getType() const override { return DOM_PARSER; }
};

}  // namespace qvox

#endif
