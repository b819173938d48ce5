/// \file
/// The handler interfaces and value types of SAX2, in terms of Xstring.
///
/// An object that a caller gives to a parser stays the caller's and must live as long as the parser
/// may use it. All handlers are called on the thread that called parse(), while the process-wide
/// parse lock is held: a handler that blocks holds up every parse in the process. A handler ends
/// the parse by throwing; the caller of parse() then receives a plain QVOXException with the code
/// and message of what was thrown. Texts and objects passed to a handler are valid during the call
/// only; a copy of a text lives on by itself.
#ifndef QVOX_SAX_H
#define QVOX_SAX_H

#include <qvox/exception.h>
#include <qvox/export.h>
#include <qvox/xstring.h>

namespace qvox {

/// The attributes of a start tag (SAX2 Attributes), in the order of the document with the defaulted
/// ones behind. A name that stands twice is found at its first place. Every text result is
/// Xstring::Null where there is nothing to return, and lives as long as this object.
class QVOX_API Attributes {
public:
    /// The index of the attribute, or -1.
    virtual int getIndex(const Xstring& uri, const Xstring& localName) const = 0;
    /// The same by the name as it stood in the document.
    virtual int getIndex(const Xstring& qName) const = 0;
    /// How many there are.
    virtual int getLength() const = 0;
    /// Null while namespaces are off, but for an xmlns attribute, which has the local name "xmlns".
    virtual const Xstring& getLocalName(int index) const = 0;
    /// The name as it stood in the document.
    virtual const Xstring& getQName(int index) const = 0;
    /// The declared type, such as "CDATA" or "(a|b)"; null for an attribute without declaration.
    virtual const Xstring& getType(const Xstring& uri, const Xstring& localName) const = 0;
    /// \copydoc getType(const Xstring&,const Xstring&) const
    virtual const Xstring& getType(const Xstring& qName) const = 0;
    /// \copydoc getType(const Xstring&,const Xstring&) const
    virtual const Xstring& getType(int index) const = 0;
    /// Null where the name has no namespace.
    virtual const Xstring& getURI(int index) const = 0;
    /// The value after normalisation (XML 1.0, attribute-value normalisation).
    virtual const Xstring& getValue(const Xstring& uri, const Xstring& localName) const = 0;
    /// \copydoc getValue(const Xstring&,const Xstring&) const
    virtual const Xstring& getValue(const Xstring& qName) const = 0;
    /// \copydoc getValue(const Xstring&,const Xstring&) const
    virtual const Xstring& getValue(int index) const = 0;

protected:
    ~Attributes() = default;
};

/// A place in a document (SAX2 Locator).
class QVOX_API Locator {
public:
    /// In display cells: a double-width character counts two.
    virtual int getColumnNumber() const = 0;
    /// Counted from 1.
    virtual int getLineNumber() const = 0;
    /// That of the document's InputSource.
    virtual const Xstring& getPublicId() const = 0;
    /// \copydoc getPublicId
    virtual const Xstring& getSystemId() const = 0;

protected:
    ~Locator() = default;
};

/// The name of a document: a value of three texts, each null until it is set. The system identifier
/// is a file name, taken relative to the working directory with a leading "file:" removed; the
/// public identifier is only repeated in error locations, and the encoding is for the caller alone
/// (a parse reads the encoding from the document).
class QVOX_API InputSource {
public:
    InputSource() = default;
    /// A source with that system identifier.
    InputSource(const Xstring& systemId);
    /// The same; `systemId` is Shift_JIS.
    InputSource(const char* systemId);

    /// Null until it is set.
    const Xstring& getEncoding() const noexcept { return encoding; }
    /// Null until it is set.
    const Xstring& getPublicId() const noexcept { return publicId; }
    /// Null until it is set.
    const Xstring& getSystemId() const noexcept { return systemId; }
    /// Takes a copy; nothing is looked at.
    void setEncoding(const Xstring& value) { encoding = value; }
    /// Takes a copy; nothing is looked at.
    void setPublicId(const Xstring& value) { publicId = value; }
    /// Takes a copy; nothing is looked at.
    void setSystemId(const Xstring& value) { systemId = value; }

private:
    Xstring encoding;
    Xstring publicId;
    Xstring systemId;
};

/// The content of a document (SAX2 ContentHandler).
class QVOX_API ContentHandler {
public:
    /// All the text between two pieces of markup in one call, references replaced; the text of a
    /// CDATA section likewise. White space between elements comes here too. A text of more than
    /// 8192 units is a bulk string over the parser's own memory: copy it to keep it.
    /// Up to that length a CR, which only a character reference can give, is LF here; a longer text
    /// keeps it.
    virtual void characters(const Xstring& text) = 0;
    /// Behind all else. Not called where the parse failed.
    virtual void endDocument() = 0;
    /// For `<a/>` too, right behind its startElement. Names are those of startElement.
    virtual void endElement(const Xstring& uri, const Xstring& localName, const Xstring& qName) = 0;
    /// In the order of startPrefixMapping, behind endElement. Not called while namespaces are off.
    virtual void endPrefixMapping(const Xstring& prefix) = 0;
    /// Never called: all white space comes through characters().
    virtual void ignorableWhiteSpace(const Xstring& text) = 0;
    /// `data` is null for `<?target?>`.
    virtual void processingInstruction(const Xstring& target, const Xstring& data) = 0;
    /// Never called: places are told with errors only.
    virtual void setDocumentLocator(const Locator& locator) = 0;
    /// Never called.
    virtual void skippedEntity(const Xstring& name) = 0;
    /// Ahead of all else.
    virtual void startDocument() = 0;
    /// `uri` and `localName` are null while namespaces are off; `uri` is null too where the name
    /// has no namespace. `attributes` is valid during the call only.
    virtual void startElement(const Xstring& uri, const Xstring& localName, const Xstring& qName,
                              const Attributes& attributes) = 0;
    /// Ahead of the startElement of its tag. `prefix` is null for the default namespace. Not called
    /// while namespaces are off.
    virtual void startPrefixMapping(const Xstring& prefix, const Xstring& uri) = 0;

protected:
    ~ContentHandler() = default;
};

/// Declarations of notations and unparsed entities (SAX2 DTDHandler).
class QVOX_API DTDHandler {
public:
    /// Identifiers that the declaration doesn't have are null.
    virtual void notationDecl(const Xstring& name, const Xstring& publicId,
                              const Xstring& systemId) = 0;
    /// Never called: an unparsed entity comes through DeclHandler::externalEntityDecl.
    virtual void unparsedEntityDecl(const Xstring& name, const Xstring& publicId,
                                    const Xstring& systemId, const Xstring& notationName) = 0;

protected:
    ~DTDHandler() = default;
};

/// Redirects external entities (SAX2 EntityResolver). It can be set and read back, but is never
/// called: external entities are opened straight from their system identifiers.
class QVOX_API EntityResolver {
public:
    /// The source to read in the place of the entity (SAX2).
    virtual InputSource resolveEntity(const Xstring& publicId, const Xstring& systemId) = 0;

protected:
    ~EntityResolver() = default;
};

/// Errors and warnings (SAX2 ErrorHandler). Each is a line of the report output as well.
class QVOX_API ErrorHandler {
public:
    /// An error in the document, well-formedness included. The parse ends with an exception when
    /// this returns. A parse that the handler itself starts is refused without being told here.
    virtual void error(const SAXParseException& exception) = 0;
    /// A failure that ends the process when this returns. No document causes it.
    virtual void fatalError(const SAXParseException& exception) = 0;
    /// The parse goes on when this returns.
    virtual void warning(const SAXParseException& exception) = 0;

protected:
    ~ErrorHandler() = default;
};

/// Comments, CDATA sections, entities and the document type declaration (SAX2 LexicalHandler). Set
/// it as the property PROPERTY_LEXICAL_HANDLER.
class QVOX_API LexicalHandler {
public:
    /// `text` is all that stands between `<!--` and `-->`.
    virtual void comment(const Xstring& text) = 0;
    /// Behind the characters() of the section.
    virtual void endCDATA() = 0;
    /// Behind the declarations of the internal and the external subset.
    virtual void endDTD() = 0;
    /// When the scanner has read the entity's text.
    virtual void endEntity(const Xstring& name) = 0;
    /// Ahead of the characters() of the section.
    virtual void startCDATA() = 0;
    /// Identifiers that the declaration doesn't have are null.
    virtual void startDTD(const Xstring& name, const Xstring& publicId,
                          const Xstring& systemId) = 0;
    /// When the scanner meets the reference, which is ahead of the characters() call that holds the
    /// text in front of it. A parameter entity's name has its "%"; the external subset has the name
    /// "[dtd]". The predefined entities, `&lt;` and its kin, are reported too.
    virtual void startEntity(const Xstring& name) = 0;

protected:
    ~LexicalHandler() = default;
};

/// Declarations of elements, attributes and entities (SAX2 DeclHandler). Set it as the property
/// PROPERTY_DECL_HANDLER. A repeated declaration is reported again.
class QVOX_API DeclHandler {
public:
    /// For each attribute of the element that has been declared so far, at the end of each
    /// attribute-list declaration. `valueDefault` is "#REQUIRED", "#IMPLIED", "#FIXED" or null, and
    /// `value` is the default or null.
    virtual void attributeDecl(const Xstring& elementName, const Xstring& attributeName,
                               const Xstring& type, const Xstring& valueDefault,
                               const Xstring& value) = 0;
    /// `model` has no white space, as in "(a,(b|c)*)".
    virtual void elementDecl(const Xstring& name, const Xstring& model) = 0;
    /// A parameter entity's name begins with "%". `publicId` may be null.
    virtual void externalEntityDecl(const Xstring& name, const Xstring& publicId,
                                    const Xstring& systemId) = 0;
    /// `value` is the replacement text.
    virtual void internalEntityDecl(const Xstring& name, const Xstring& value) = 0;

protected:
    ~DeclHandler() = default;
};

/// Implements four of the handlers with operations that do nothing; override what you need.
/// resolveEntity returns an InputSource whose texts are null.
class QVOX_API DefaultHandler : public ContentHandler,
                                public DTDHandler,
                                public EntityResolver,
                                public ErrorHandler {
public:
    DefaultHandler() = default;

    void characters(const Xstring& text) override;
    void endDocument() override;
    void endElement(const Xstring& uri, const Xstring& localName, const Xstring& qName) override;
    void endPrefixMapping(const Xstring& prefix) override;
    void ignorableWhiteSpace(const Xstring& text) override;
    void processingInstruction(const Xstring& target, const Xstring& data) override;
    void setDocumentLocator(const Locator& locator) override;
    void skippedEntity(const Xstring& name) override;
    void startDocument() override;
    void startElement(const Xstring& uri, const Xstring& localName, const Xstring& qName,
                      const Attributes& attributes) override;
    void startPrefixMapping(const Xstring& prefix, const Xstring& uri) override;

    void notationDecl(const Xstring& name, const Xstring& publicId,
                      const Xstring& systemId) override;
    void unparsedEntityDecl(const Xstring& name, const Xstring& publicId, const Xstring& systemId,
                            const Xstring& notationName) override;

    InputSource resolveEntity(const Xstring& publicId, const Xstring& systemId) override;

    void error(const SAXParseException& exception) override;
    void fatalError(const SAXParseException& exception) override;
    void warning(const SAXParseException& exception) override;
};

/// What reads a document and calls handlers (SAX2 XMLReader). SAXParser implements it. Handlers are
/// not owned, may be null, and may be changed at any time: the next event sees the new one.
class QVOX_API XMLReader {
public:
    /// Null for none.
    virtual ContentHandler* getContentHandler() const = 0;
    /// Null for none.
    virtual DTDHandler* getDTDHandler() const = 0;
    /// Null for none.
    virtual EntityResolver* getEntityResolver() const = 0;
    /// Null for none.
    virtual ErrorHandler* getErrorHandler() const = 0;
    /// As SAXParser::getFeature.
    virtual bool getFeature(const char* name) const = 0;
    /// As SAXParser::getProperty.
    virtual void* getProperty(const char* name) const = 0;
    /// As SAXParser::parse(InputSource&).
    virtual void parse(InputSource& source) = 0;
    /// As SAXParser::parse(const char*).
    virtual void parse(const char* systemId) = 0;
    /// Null takes the handler away.
    virtual void setContentHandler(const ContentHandler* handler) = 0;
    /// Null takes the handler away.
    virtual void setDTDHandler(const DTDHandler* handler) = 0;
    /// Null takes the resolver away.
    virtual void setEntityResolver(const EntityResolver* resolver) = 0;
    /// Null takes the handler away.
    virtual void setErrorHandler(const ErrorHandler* handler) = 0;
    /// As SAXParser::setFeature.
    virtual void setFeature(const char* name, bool value) = 0;
    /// As SAXParser::setProperty.
    virtual void setProperty(const char* name, const void* value) = 0;

protected:
    ~XMLReader() = default;
};

/// A reader that stands before another (SAX2 XMLFilter), for callers to implement; the library
/// neither has nor calls one.
class QVOX_API XMLFilter {
public:
    /// The reader that this one stands before.
    virtual XMLReader* getParent() const = 0;
    /// Names that reader; it stays the caller's.
    virtual void setParent(XMLReader* parent) = 0;

protected:
    ~XMLFilter() = default;
};

}  // namespace qvox

#endif
