// Calls of the tree's interface as texts, and what comes of them as texts.
//     "x: a removeChild b; c insertBefore x null"
// A call is a node, a member function and its arguments; a label may stand in front, for what is
// returned. A node is one with a label, the first with that name or value in one of the two trees,
// a@x for an attribute, / for the document, or a new one as +tree. Texts may stand in quotes.
#pragma once

#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/tables.h"
#include "support/tree_text.h"

namespace qvox_test {

using Words = std::vector<std::string>;

// The parts of a text, without what is empty; no separator counts in quotes and brackets.
inline Words split(const std::string& text, char separator) {
    Words parts(1);
    bool isQuoted = false;
    int depth = 0;
    for (const char c : text) {
        isQuoted ^= c == '\'';
        if (!isQuoted) depth += (c == '(' || c == '[' ? 1 : 0) - (c == ')' || c == ']' ? 1 : 0);
        const bool isEnd = c == separator && !isQuoted && depth == 0;
        if (isEnd) parts.emplace_back();
        if (!isEnd) parts.back() += c;
    }
    parts.erase(std::remove(parts.begin(), parts.end(), ""), parts.end());
    return parts;
}

class Script {
public:
    using Function = std::function<std::string(Script&, const Words&)>;

    explicit Script(const std::string& text, const std::string& besideText = "")
        : tree(text), beside(besideText) {}
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;
    virtual ~Script() { tree.free_dropped(); }

    // What the last call returned or raised, and behind it all trees where it has changed them: the
    // two documents, and what is known and stands in neither.
    std::string run(const std::string& calls) {
        std::string before;
        std::string out;
        std::string after;
        for (const std::string& call : split(calls, ';')) {
            before = state();
            returned = nullptr;
            const std::string raised = raised_by([&] { out = outcome_of(split(call, ' ')); });
            if (!raised.empty()) out = raised;
            after = state();
            if (returned != nullptr) remember(returned);
        }
        return after == before ? out : out + (out.empty() ? "> " : " > ") + after;
    }

    qvox::Node* node(const std::string& word) {
        if (word == "null") return nullptr;
        if (word == "/" || word == "//") return word == "/" ? tree.document : beside.document;
        if (word[0] == '+') return remember(tree.make(word.c_str() + 1));
        if (labels.count(word) != 0) return labels[word];
        const std::size_t at = word.find('@');
        if (at != std::string::npos) {
            const qvox::NamedNodeMap* const map = node(word.substr(0, at))->getAttributes();
            return map->getNamedItem(word.substr(at + 1).c_str());
        }
        qvox::Node* const found = tree[word.c_str()];
        return found != nullptr ? found : beside[word.c_str()];
    }

    virtual qvox::Range* range(const std::string& /*word*/) { return nullptr; }

    // Lives as long as a call and no longer.
    virtual std::shared_ptr<void> around_call() { return nullptr; }

    template <typename Class>
    Class& target(const std::string& word) {
        if constexpr (std::is_same_v<Class, qvox::Range>) {
            return *range(word);
        } else if constexpr (std::is_same_v<Class, qvox::NamedNodeMap>) {
            return *node(word)->getAttributes();
        } else if constexpr (std::is_same_v<Class, qvox::DOMImplementation>) {
            return *tree.parser.getImplementation();
        } else {
            return dynamic_cast<Class&>(*node(word));
        }
    }

    template <typename Type>
    Type argument(const std::string& word) {
        if constexpr (std::is_same_v<Type, qvox::Xstring>) {
            if (word == "-") return {};
            return (word[0] == '\'' ? word.substr(1, word.size() - 2) : word).c_str();
        } else if constexpr (std::is_same_v<Type, bool>) {
            return word == "true";
        } else if constexpr (std::is_same_v<Type, int>) {
            return word == "max" ? std::numeric_limits<int>::max() : std::stoi(word);
        } else if constexpr (std::is_same_v<Type, qvox::Range*>) {
            return range(word);
        } else {
            return dynamic_cast<Type>(node(word));
        }
    }

    std::string shown(const qvox::Xstring& text) { return quoted(text); }
    std::string shown(bool is) { return is ? "true" : "false"; }
    std::string shown(const qvox::NodeList* list) { return items_text(*list); }
    std::string shown(qvox::Range* made) {
        tree.document->freeRange(made);
        return "range";
    }
    std::string shown(int number) { return std::to_string(number); }
    std::string shown(qvox::Node* result) {
        if (result == tree.document || result == beside.document) {
            return result == tree.document ? "/" : "//";
        }
        returned = result;
        return tree_text(result);
    }

    void free_node(const std::string& word) {
        qvox::Node* const freed = tree.keep(node(word));
        known.erase(std::remove(known.begin(), known.end(), freed), known.end());
        const std::shared_ptr<void> around = around_call();
        tree.parser.freeNode(freed);
    }

    virtual std::string state() {
        std::string out = tree.text() + (beside.document->hasChildNodes() ? beside.text() : "");
        for (const qvox::Node* const root : known) {
            const auto* const attribute = dynamic_cast<const qvox::Attr*>(root);
            if (attribute != nullptr && attribute->getOwnerElement() != nullptr) continue;
            if (root->getParentNode() == nullptr) out += " + " + tree_text(root);
        }
        return out;
    }

    Tree tree;
    Tree beside;

private:
    std::map<std::string, qvox::Node*> labels;
    std::vector<qvox::Node*> known;
    qvox::Node* returned = nullptr;

    qvox::Node* remember(qvox::Node* node) {
        if (std::find(known.begin(), known.end(), node) == known.end()) known.push_back(node);
        return tree.drop(node);
    }

    std::string outcome_of(Words words) {
        std::string label;
        if (words[0].back() == ':') {
            label = words[0].substr(0, words[0].size() - 1);
            words.erase(words.begin());
        }
        static const std::map<std::string, Function> all = functions();
        std::string out = words.size() > 1 ? all.at(words[1])(*this, words) : shown(node(words[0]));
        if (!label.empty()) labels[label] = returned;
        return out;
    }

    static std::map<std::string, Function> functions();
};

// A table of calls and what comes of them, one after the other.
inline void expect_steps(Script& script, const char* table) {
    for (const Row& row : cells_of(table)) EXPECT_EQ(script.run(row[0]), row[1]) << row[0];
}
inline void expect_steps(const char* tree, const char* beside, const char* table) {
    Script script(tree, beside);
    expect_steps(script, table);
}
inline void expect_steps(const char* tree, const char* table) { expect_steps(tree, "", table); }

// Each on trees of its own.
inline void expect_each(const char* tree, const char* table) {
    expect_cells(table, [tree](const std::string& calls) { return Script(tree).run(calls); });
}

}  // namespace qvox_test
