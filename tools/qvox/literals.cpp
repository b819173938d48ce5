#include "literals.h"

void LiteralRecorder::attach(qvox::SAXParser& parser) {
    parser.setDTDHandler(this);
    parser.setProperty(qvox::PROPERTY_DECL_HANDLER, static_cast<qvox::DeclHandler*>(this));
}

void LiteralRecorder::startDTD(const qvox::Xstring& publicId, const qvox::Xstring& systemId) {
    record(publicId);
    record(systemId);
}

void LiteralRecorder::attributeDecl(const qvox::Xstring& /*elementName*/,
                                    const qvox::Xstring& /*attributeName*/,
                                    const qvox::Xstring& /*type*/,
                                    const qvox::Xstring& /*valueDefault*/,
                                    const qvox::Xstring& value) {
    record(value);
}

void LiteralRecorder::externalEntityDecl(const qvox::Xstring& /*name*/,
                                         const qvox::Xstring& publicId,
                                         const qvox::Xstring& systemId) {
    record(publicId);
    record(systemId);
}

void LiteralRecorder::internalEntityDecl(const qvox::Xstring& /*name*/,
                                         const qvox::Xstring& value) {
    record(value);
}

void LiteralRecorder::notationDecl(const qvox::Xstring& /*name*/, const qvox::Xstring& publicId,
                                   const qvox::Xstring& systemId) {
    record(publicId);
    record(systemId);
}

void LiteralRecorder::record(const qvox::Xstring& literal) {
    if (!literal.isNull()) recorded.emplace_back(view_of(literal));
}
