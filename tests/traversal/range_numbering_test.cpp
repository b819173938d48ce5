// Ranges on random trees, beside a plain model of them that really numbers the tags of a tree and
// follows the rules one by one.
#include <algorithm>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::DOMException;
using qvox::Node;
using qvox::Range;

bool has_data(const Node* node) {
    const int type = node->getNodeType();
    return type == 3 || type == 4 || type == 7 || type == 8;
}

int child_count(const Node* node) { return node->getChildNodes()->getLength(); }

std::size_t as_size(int count) { return static_cast<std::size_t>(count); }

Node* root_of(Node* node) {
    return node->getParentNode() == nullptr ? node : root_of(node->getParentNode());
}

Node* common_ancestor(Node* one, Node* other) {
    for (Node* a = one; a != nullptr; a = a->getParentNode()) {
        for (Node* b = other; b != nullptr; b = b->getParentNode()) {
            if (a == b) return a;
        }
    }
    return nullptr;
}

// The tags of a tree; a tag's number is its index.
struct Tag {
    Node* node;
    bool isClosing;
};

void add_tags(Node* node, std::vector<Tag>& tags) {
    if (node == nullptr) return;
    tags.push_back({node, false});
    for (int i = 0; i < child_count(node); ++i) add_tags(node->getChildNodes()->item(i), tags);
    tags.push_back({node, true});
}

struct Point {
    Node* node;
    int offset;
};

// What a change of the tree may change of a node.
struct NodeState {
    std::string value;
    std::vector<Node*> children;

    bool operator==(const NodeState& other) const {
        return value == other.value && children == other.children;
    }
};

using Snapshot = std::map<Node*, NodeState>;

class Model {
public:
    explicit Model(Tree& of) : start{of.document, 0}, end{of.document, 0}, tree(of) {}

    Point start;
    Point end;

    void set(bool isStart, const Point& point) {
        (isStart ? start : end) = point;
        if (!in_order()) (isStart ? end : start) = point;
    }

    int compare(int how, const Model& source) {
        const Point& theirs = how == 0 || how == 1 ? source.start : source.end;
        const Point& ours = how == 0 || how == 3 ? start : end;
        if (root_of(source.start.node) != root_of(start.node)) {
            throw DOMException(DOMException::WRONG_DOCUMENT_ERR, "different root container");
        }
        number(root_of(start.node));
        const double difference = position(ours) - position(theirs);
        if (difference != 0) return difference < 0 ? -1 : 1;
        if (!has_data(start.node) || ours.offset == theirs.offset) return 0;
        return ours.offset < theirs.offset ? -1 : 1;
    }

    // A node that isn't copied where it opens is copied where it closes.
    std::string clone() {
        begin();
        std::vector<Node*> parents = {tree.drop(tree.document->createDocumentFragment())};
        std::vector<bool> isCopied;
        for (std::size_t i = 0; i < tags.size(); ++i) {
            Node* const node = tags[i].node;
            if (node->getNodeType() == Node::DOCUMENT_TYPE_NODE) {
                throw DOMException(DOMException::HIERARCHY_REQUEST_ERR,
                                   "document type can't clone");
            }
            if (!tags[i].isClosing) {
                isCopied.push_back(is_selected(i));
                Node* const parent = parents.back();
                parents.push_back(is_selected(i) ? append_copy(node, parent) : parent);
                continue;
            }
            parents.pop_back();
            if (!isCopied.back() && is_selected(i)) append_copy(node, parents.back());
            isCopied.pop_back();
        }
        return tree_text(parents[0]);
    }

    std::string text() {
        begin();
        std::string out;
        for (std::size_t i = 0; i < tags.size(); ++i) {
            const Node* const node = tags[i].node;
            if (tags[i].isClosing || !is_selected(i)) continue;
            if (has_data(node)) out += part_of(node);
            if (node->getNodeType() == 1) out += '<' + plain(node->getNodeName()) + '>';
        }
        return out;
    }

    // A node goes when the end of its content does, with all that is in it.
    void remove(Snapshot& nodes) {
        begin();
        std::vector<Node*> leaving;
        std::vector<std::size_t> marks;
        for (std::size_t i = 0; i < tags.size(); ++i) {
            if (!tags[i].isClosing) {
                marks.push_back(leaving.size());
                continue;
            }
            if (is_selected(i - 1)) {
                leaving.resize(marks.back());
                leaving.push_back(tags[i].node);
            }
            marks.pop_back();
        }
        for (Node* const node : leaving) {
            if (has_data(node) && (node == start.node || node == end.node)) {
                const std::size_t from = node == start.node ? as_size(start.offset) : 0;
                nodes[node].value.erase(from, part_of(node).size());
            } else {
                std::vector<Node*>& list = nodes[node->getParentNode()].children;
                list.erase(std::find(list.begin(), list.end(), node));
            }
        }
        end = start;
    }

private:
    Tree& tree;
    std::vector<Tag> tags;
    double first = 0;
    double last = 0;

    void number(Node* root) {
        tags.clear();
        add_tags(root, tags);
    }

    // The end of a node without children is between its tags, and what is in another tree behind
    // all.
    double position(const Point& point) const {
        Node* const child =
            has_data(point.node) ? point.node : point.node->getChildNodes()->item(point.offset);
        const auto tag = std::find_if(tags.begin(), tags.end(), [&](const Tag& one) {
            return one.node == (child != nullptr ? child : point.node) &&
                   one.isClosing == (child == nullptr);
        });
        const bool isBetween = child == nullptr && child_count(point.node) == 0;
        const double back = child != nullptr && tag != tags.end() ? 0 : isBetween ? 0.5 : 1;
        return static_cast<double>(tag - tags.begin()) - (tag == tags.end() ? 1 : back);
    }

    bool in_order() {
        if (start.node == end.node) return start.offset <= end.offset;
        number(common_ancestor(start.node, end.node));
        if (tags.empty() || position(start) > position(end)) return false;
        return position(start) < position(end) || !has_data(start.node) ||
               start.offset <= end.offset;
    }

    void begin() {
        number(common_ancestor(start.node, end.node));
        if (tags.empty()) {
            throw DOMException(DOMException::NOT_SUPPORTED_ERR, "TreeWalker root is null");
        }
        first = position(start);
        last = position(end) - (has_data(end.node) ? 0 : 1);
    }

    bool is_selected(std::size_t i) const {
        return first <= static_cast<double>(i) && static_cast<double>(i) <= last;
    }

    std::string part_of(const Node* node) const {
        const std::string data = plain(node->getNodeValue());
        const std::size_t from = as_size(node == start.node ? start.offset : 0);
        const std::size_t to = node == end.node ? as_size(end.offset) : data.size();
        if (from > data.size()) throw DOMException(DOMException::INDEX_SIZE_ERR, "invalid index");
        return data.substr(from, to - from);
    }

    // In a fragment, since a text can have children too; a fragment takes the place of another
    // node.
    Node* append_copy(Node* node, Node* parent) {
        const std::string part = has_data(node) ? part_of(node) : "";
        Node* const copy = tree.drop(node->cloneNode(false));
        if (has_data(node)) copy->setNodeValue(part.c_str());
        Node* const place = tree.drop(tree.document->createDocumentFragment());
        const bool isFragment = node->getNodeType() == Node::DOCUMENT_FRAGMENT_NODE;
        Node* const placed = place->appendChild(isFragment ? tree.drop(tree.make("x")) : copy);
        parent->appendChild(place);
        if (isFragment) parent->replaceChild(copy, placed);
        return copy;
    }
};

class Dice {
public:
    explicit Dice(unsigned seed) : engine(seed) {}

    int below(int count) { return static_cast<int>(engine() % static_cast<unsigned>(count)); }

    std::string nodes(int depth) {
        std::string out;
        for (int i = below(5); i > 0; --i) out += node(depth) + ' ';
        return out;
    }

private:
    std::mt19937 engine;

    std::string node(int depth) {
        const char* const parents[] = {"a", "b", "c[k='1']", "d", "e", "&r", "#"};
        const char* const leaves[] = {"", "", "", "=", "!", "?t"};
        const char* const data[] = {"'xyzw'", "'yzw'", "'zw'", "'w'", "''"};
        if (depth == 0 || below(2) == 0) return std::string(leaves[below(6)]) + data[below(5)];
        return parents[below(depth < 3 ? 7 : 5)] + ('(' + nodes(depth - 1) + ')');
    }
};

// What an action returns or raises.
template <typename Action>
std::string outcome(Action action) {
    std::string out;
    return raised_by([&] { out = action(); }) + out;
}

class RandomRanges {
public:
    explicit RandomRanges(unsigned seed) : dice(seed) {
        collect(tree.document);
        collect(tree.drop(tree.make(("#(" + dice.nodes(3) + ')').c_str())));
        // Text can have children, which go there in a fragment.
        Node* const fragment = tree.drop(tree.make("#(f('x'))"));
        const auto text = std::find_if(nodes.begin(), nodes.end(), [](const Node* node) {
            return has_data(node) && node->getNodeValue() == "xyzw";
        });
        if (text == nodes.end()) return;
        Node* const parent = *text;
        parent->appendChild(fragment);
        collect(parent->getFirstChild());
    }
    RandomRanges(const RandomRanges&) = delete;
    RandomRanges& operator=(const RandomRanges&) = delete;
    ~RandomRanges() {
        for (Range* const range : ranges) tree.document->freeRange(range);
    }

    void run() {
        SCOPED_TRACE(tree.text());
        for (int i = 0; i < 6; ++i) {
            set_points(i % 2);
            check_reading();
        }
        change_tree();
        check_reading();
        Snapshot expected = snapshot();
        const std::string raised = raised_by([&] { models[0].remove(expected); });
        EXPECT_EQ(raised_by([&] { ranges[0]->deleteContents(); }), raised);
        EXPECT_TRUE(snapshot() == expected) << tree.text();
        check_reading();
    }

private:
    Dice dice;
    Tree tree{(dice.below(5) == 0 ? "%d " : "") + ("a(" + dice.nodes(4) + ") b(") + dice.nodes(3) +
              ')'};
    std::vector<Node*> nodes;
    Range* const ranges[2] = {tree.document->createRange(), tree.document->createRange()};
    Model models[2] = {Model(tree), Model(tree)};

    void collect(Node* root) {
        nodes.push_back(root);
        for (int i = 0; i < child_count(root); ++i) collect(root->getChildNodes()->item(i));
    }

    Snapshot snapshot() const {
        Snapshot out;
        for (Node* const node : nodes) {
            out[node].value = plain(node->getNodeValue());
            for (int i = 0; i < child_count(node); ++i) {
                out[node].children.push_back(node->getChildNodes()->item(i));
            }
        }
        return out;
    }

    std::size_t any_node() { return as_size(dice.below(static_cast<int>(nodes.size()))); }

    // Sets each point anew, most often near the last one.
    void set_points(int which) {
        std::size_t at = any_node();
        for (const bool isStart : {true, false}) {
            if (dice.below(3) == 0) at = any_node();
            at = (at + as_size(dice.below(4))) % nodes.size();
            Node* const node = nodes[at];
            if (node->getNodeType() == Node::DOCUMENT_TYPE_NODE) continue;
            const int most = has_data(node) ? node->getNodeValue().length() : child_count(node);
            const int offset = dice.below(most + 1);
            isStart ? ranges[which]->setStart(node, offset) : ranges[which]->setEnd(node, offset);
            models[which].set(isStart, {node, offset});
            check_points();
        }
    }

    // Takes out a node or shortens a text behind the ranges' back.
    void change_tree() {
        for (int i = dice.below(3); i > 0; --i) {
            Node* const node = nodes[any_node()];
            if (has_data(node)) {
                node->setNodeValue(plain(node->getNodeValue()).substr(0, 1).c_str());
            } else if (node->getParentNode() != nullptr) {
                tree.drop(node->getParentNode()->removeChild(node));
            }
        }
    }

    void check_points() const {
        for (const int i : {0, 1}) {
            EXPECT_EQ(ranges[i]->getStartContainer(), models[i].start.node);
            EXPECT_EQ(ranges[i]->getStartOffset(), models[i].start.offset);
            EXPECT_EQ(ranges[i]->getEndContainer(), models[i].end.node);
            EXPECT_EQ(ranges[i]->getEndOffset(), models[i].end.offset);
        }
    }

    void check_reading() {
        check_points();
        for (int how = 0; how < 4; ++how) {
            EXPECT_EQ(outcome([&] {
                          return std::to_string(ranges[0]->compareBoundaryPoints(how, ranges[1]));
                      }),
                      outcome([&] { return std::to_string(models[0].compare(how, models[1])); }));
        }
        for (const int i : {0, 1}) {
            EXPECT_EQ(outcome([&] { return plain(ranges[i]->toString()); }),
                      outcome([&] { return models[i].text(); }));
            EXPECT_EQ(outcome([&] { return tree_text(tree.drop(ranges[i]->cloneContents())); }),
                      outcome([&] { return models[i].clone(); }));
        }
    }
};

TEST(RangeNumbering, RandomTrees) {
    for (unsigned seed = 1; seed <= 1500 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        RandomRanges(seed).run();
    }
}

}  // namespace
}  // namespace qvox_test
