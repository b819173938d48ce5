#include "support/script.h"

namespace qvox_test {

namespace {

template <typename Class, typename... Types, typename Method, std::size_t... i>
Script::Function function(Method method, std::index_sequence<i...> /*numbers*/) {
    return [method](Script& script, const Words& words) -> std::string {
        Class& target = script.target<Class>(words[0]);
        const auto call = [&]() -> decltype(auto) {
            return (target.*method)(script.argument<Types>(words.at(2 + i))...);
        };
        if constexpr (std::is_void_v<decltype(call())>) {
            call();
            return {};
        } else {
            return script.shown(call());
        }
    };
}

template <typename Class, typename Result, typename... Types>
Script::Function of(Result (Class::*method)(Types...)) {
    return function<Class, std::decay_t<Types>...>(method, std::index_sequence_for<Types...>());
}

template <typename Class, typename Result, typename... Types>
Script::Function of(Result (Class::*method)(Types...) const) {
    return function<Class, std::decay_t<Types>...>(method, std::index_sequence_for<Types...>());
}

}  // namespace

std::map<std::string, Script::Function> Script::functions() {
    using namespace qvox;
    std::map<std::string, Function> all;
    const auto add = [&all](const std::string& names, auto... methods) {
        const Words words = split(names, ' ');
        auto name = words.begin();
        (all.emplace(*name++, of(methods)), ...);
    };
    add("appendChild cloneNode getFirstChild getLastChild getNextSibling getPreviousSibling "
        "getParentNode getOwnerDocument insertBefore normalize removeChild replaceChild "
        "setNodeValue setPrefix hasAttributes isSupported getNodeValue",
        &Node::appendChild, &Node::cloneNode, &Node::getFirstChild, &Node::getLastChild,
        &Node::getNextSibling, &Node::getPreviousSibling, &Node::getParentNode,
        &Node::getOwnerDocument, &Node::insertBefore, &Node::normalize, &Node::removeChild,
        &Node::replaceChild, &Node::setNodeValue, &Node::setPrefix, &Node::hasAttributes,
        &Node::isSupported, &Node::getNodeValue);
    add("getNamedItem getNamedItemNS setNamedItem setNamedItemNS removeNamedItem removeNamedItemNS",
        &NamedNodeMap::getNamedItem, &NamedNodeMap::getNamedItemNS, &NamedNodeMap::setNamedItem,
        &NamedNodeMap::setNamedItemNS, &NamedNodeMap::removeNamedItem,
        &NamedNodeMap::removeNamedItemNS);
    add("appendData deleteData insertData replaceData setData substringData getLength getData",
        &CharacterData::appendData, &CharacterData::deleteData, &CharacterData::insertData,
        &CharacterData::replaceData, &CharacterData::setData, &CharacterData::substringData,
        &CharacterData::getLength, &CharacterData::getData);
    add("splitText", &Text::splitText);
    add("getOwnerElement setValue", &Attr::getOwnerElement, &Attr::setValue);
    add("getAttribute getAttributeNS getAttributeNode getAttributeNodeNS hasAttribute "
        "hasAttributeNS setAttribute setAttributeNS removeAttribute removeAttributeNS "
        "setAttributeNode setAttributeNodeNS removeAttributeNode",
        &Element::getAttribute, &Element::getAttributeNS, &Element::getAttributeNode,
        &Element::getAttributeNodeNS, &Element::hasAttribute, &Element::hasAttributeNS,
        &Element::setAttribute, &Element::setAttributeNS, &Element::removeAttribute,
        &Element::removeAttributeNS, &Element::setAttributeNode, &Element::setAttributeNodeNS,
        &Element::removeAttributeNode);
    add("createAttribute createAttributeNS createElement createElementNS createCDATASection "
        "createEntityReference createProcessingInstruction getDoctype getDocumentElement "
        "getElementById importNode",
        &Document::createAttribute, &Document::createAttributeNS, &Document::createElement,
        &Document::createElementNS, &Document::createCDATASection, &Document::createEntityReference,
        &Document::createProcessingInstruction, &Document::getDoctype,
        &Document::getDocumentElement, &Document::getElementById, &Document::importNode);
    add("collapse compareBoundaryPoints deleteContents extractContents cloneContents getCollapsed "
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
    all["free"] = [](Script& script, const Words& words) {
        script.free_node(words[0]);
        return std::string();
    };
    return all;
}

}  // namespace qvox_test
