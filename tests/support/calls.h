// The calls that read and change trees, each with its name, for the texts of tests and for fuzzers.
#pragma once

#include <sstream>
#include <string>

#include <qvox/qvox.h>

namespace qvox_test {

// Calls add(name, method) for each. A document's calls that an element has too begin with "/".
template <typename Add>
void for_each_call(Add add) {
    using namespace qvox;
    const auto all = [&add](const char* names, auto... methods) {
        std::istringstream words(names);
        std::string name;
        ((words >> name, add(name, methods)), ...);
    };
    all("appendChild cloneNode getFirstChild getLastChild getNextSibling getPreviousSibling "
        "getParentNode getOwnerDocument insertBefore normalize removeChild replaceChild "
        "setNodeValue setPrefix hasAttributes isSupported getNodeValue",
        &Node::appendChild, &Node::cloneNode, &Node::getFirstChild, &Node::getLastChild,
        &Node::getNextSibling, &Node::getPreviousSibling, &Node::getParentNode,
        &Node::getOwnerDocument, &Node::insertBefore, &Node::normalize, &Node::removeChild,
        &Node::replaceChild, &Node::setNodeValue, &Node::setPrefix, &Node::hasAttributes,
        &Node::isSupported, &Node::getNodeValue);
    all("getNamedItem getNamedItemNS setNamedItem setNamedItemNS removeNamedItem removeNamedItemNS",
        &NamedNodeMap::getNamedItem, &NamedNodeMap::getNamedItemNS, &NamedNodeMap::setNamedItem,
        &NamedNodeMap::setNamedItemNS, &NamedNodeMap::removeNamedItem,
        &NamedNodeMap::removeNamedItemNS);
    all("appendData deleteData insertData replaceData setData substringData getLength getData",
        &CharacterData::appendData, &CharacterData::deleteData, &CharacterData::insertData,
        &CharacterData::replaceData, &CharacterData::setData, &CharacterData::substringData,
        &CharacterData::getLength, &CharacterData::getData);
    all("splitText getOwnerElement setValue", &Text::splitText, &Attr::getOwnerElement,
        &Attr::setValue);
    all("getAttribute getAttributeNS getAttributeNode getAttributeNodeNS hasAttribute "
        "hasAttributeNS setAttribute setAttributeNS removeAttribute removeAttributeNS "
        "setAttributeNode setAttributeNodeNS removeAttributeNode getElementsByTagName "
        "getElementsByTagNameNS",
        &Element::getAttribute, &Element::getAttributeNS, &Element::getAttributeNode,
        &Element::getAttributeNodeNS, &Element::hasAttribute, &Element::hasAttributeNS,
        &Element::setAttribute, &Element::setAttributeNS, &Element::removeAttribute,
        &Element::removeAttributeNS, &Element::setAttributeNode, &Element::setAttributeNodeNS,
        &Element::removeAttributeNode, &Element::getElementsByTagName,
        &Element::getElementsByTagNameNS);
    all("createAttribute createAttributeNS createElement createElementNS createCDATASection "
        "createTextNode createComment createDocumentFragment createEntityReference "
        "createProcessingInstruction getDoctype getDocumentElement getElementById importNode "
        "/getElementsByTagName /getElementsByTagNameNS getInternalSubset",
        &Document::createAttribute, &Document::createAttributeNS, &Document::createElement,
        &Document::createElementNS, &Document::createCDATASection, &Document::createTextNode,
        &Document::createComment, &Document::createDocumentFragment,
        &Document::createEntityReference, &Document::createProcessingInstruction,
        &Document::getDoctype, &Document::getDocumentElement, &Document::getElementById,
        &Document::importNode, &Document::getElementsByTagName, &Document::getElementsByTagNameNS,
        &DocumentType::getInternalSubset);
    all("createDocument createDocumentType", &DOMImplementation::createDocument,
        &DOMImplementation::createDocumentType);
    all("collapse compareBoundaryPoints deleteContents extractContents cloneContents getCollapsed "
        "getCommonAncestorContainer getStartContainer getStartOffset getEndContainer getEndOffset "
        "insertNode selectNode selectNodeContents setEnd setEndAfter setEndBefore setStart "
        "setStartAfter setStartBefore surroundContents toString detach cloneRange",
        &Range::collapse, &Range::compareBoundaryPoints, &Range::deleteContents,
        &Range::extractContents, &Range::cloneContents, &Range::getCollapsed,
        &Range::getCommonAncestorContainer, &Range::getStartContainer, &Range::getStartOffset,
        &Range::getEndContainer, &Range::getEndOffset, &Range::insertNode, &Range::selectNode,
        &Range::selectNodeContents, &Range::setEnd, &Range::setEndAfter, &Range::setEndBefore,
        &Range::setStart, &Range::setStartAfter, &Range::setStartBefore, &Range::surroundContents,
        &Range::toString, &Range::detach, &Range::cloneRange);
}

}  // namespace qvox_test
