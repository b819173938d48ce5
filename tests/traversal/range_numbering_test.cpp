// Ranges on random trees, beside a plain model of them that really numbers the tags of a tree. The
// model walks whole subtrees, recurses, and follows the rules one by one.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::DOMException;
using qvox::Node;
using qvox::Range;
using qvox::Xstring;

bool has_data(const Node* node) {
    const int type = node->getNodeType();
    return type == 3 || type == 4 || type == 7 || type == 8;
}

bool has_child_offsets(const Node* node) {
    const int type = node->getNodeType();
    return type == 1 || type == 2 || type == 5 || type == 9 || type == 11;
}

int child_count(const Node* node) { return node->getChildNodes()->getLength(); }

Node* root_of(Node* node) {
    return node->getParentNode() == nullptr ? node : root_of(node->getParentNode());
}

struct Point {
    Node* node;
    int offset;
};

class Model {
public:
    explicit Model(Tree& of) : start{of.document, 0}, end{of.document, 0}, tree(of) {}

    Point start;
    Point end;

    void set_start(const Point& point) {
        start = point;
        if (!in_order()) end = start;
    }

    void set_end(const Point& point) {
        end = point;
        if (!in_order()) start = end;
    }

    int compare(int how, const Model& source) {
        const Point& theirs = how == 0 || how == 1 ? source.start : source.end;
        const Point& ours = how == 0 || how == 3 ? start : end;
        Node* const root = root_of(start.node);
        if (root_of(source.start.node) != root) {
            throw DOMException(DOMException::WRONG_DOCUMENT_ERR, "different root container");
        }
        const double s = position(root, theirs);
        const double t = position(root, ours);
        if (t != s) return t < s ? -1 : 1;
        if (!has_data(start.node) || ours.offset == theirs.offset) return 0;
        return ours.offset < theirs.offset ? -1 : 1;
    }

    std::string clone() {
        begin();
        Node* const fragment = tree.drop(tree.document->createDocumentFragment());
        copy_selected(ancestor, fragment);
        return tree_text(fragment);
    }

    std::string text() {
        begin();
        std::string out;
        gather_text(ancestor, out);
        return out;
    }

    void remove() {
        begin();
        queue.clear();
        collect_selected(ancestor);
        for (Node* const node : queue) {
            if (has_data(node) && (node == start.node || node == end.node)) {
                const std::string data = plain(node->getNodeValue());
                const std::string part = part_of(node);
                const int from = node == start.node ? start.offset : 0;
                const std::string rest = std::string(data).erase(as_size(from), part.size());
                node->setNodeValue(rest.c_str());
            } else {
                tree.drop(node->getParentNode()->removeChild(node));
            }
        }
        end = start;
    }

private:
    Tree& tree;
    Node* ancestor = nullptr;
    double counter = 0;
    double first = 0;
    double last = 0;
    std::vector<Node*> queue;

    static std::size_t as_size(int count) { return static_cast<std::size_t>(count); }

    static Node* common_ancestor(Node* one, Node* other) {
        for (Node* a = one; a != nullptr; a = a->getParentNode()) {
            for (Node* b = other; b != nullptr; b = b->getParentNode()) {
                if (a == b) return a;
            }
        }
        return nullptr;
    }

    double position(Node* root, const Point& point) {
        Node* target = point.node;
        bool atEnd = false;
        if (has_child_offsets(point.node)) {
            target = point.node->getChildNodes()->item(point.offset);
            atEnd = target == nullptr;
            if (atEnd) target = point.node;
        }
        counter = -1;
        const bool found = find(root, target, atEnd);
        return found && atEnd && child_count(target) == 0 ? counter + 0.5 : counter;
    }

    bool find(Node* node, const Node* target, bool atEnd) {
        ++counter;
        if (node == target && !atEnd) return true;
        for (int i = 0; i < child_count(node); ++i) {
            if (find(node->getChildNodes()->item(i), target, atEnd)) return true;
        }
        if (node == target) return true;
        ++counter;
        return false;
    }

    bool in_order() {
        if (start.node == end.node) return start.offset <= end.offset;
        if (root_of(start.node) != root_of(end.node)) return false;
        Node* const common = common_ancestor(start.node, end.node);
        const double p = position(common, start);
        const double q = position(common, end);
        if (p != q) return p < q;
        return !has_data(start.node) || start.offset <= end.offset;
    }

    void begin() {
        ancestor = common_ancestor(start.node, end.node);
        if (ancestor == nullptr) {
            throw DOMException(DOMException::NOT_SUPPORTED_ERR, "TreeWalker root is null");
        }
        first = position(ancestor, start);
        last = position(ancestor, end) - (has_data(end.node) ? 0 : 1);
        counter = -1;
    }

    bool selected(double number) const { return first <= number && number <= last; }

    std::string part_of(const Node* node) const {
        const std::string data = plain(node->getNodeValue());
        const std::size_t from = as_size(node == start.node ? start.offset : 0);
        const std::size_t to = node == end.node ? as_size(end.offset) : data.size();
        if (from > data.size()) throw DOMException(DOMException::INDEX_SIZE_ERR, "invalid index");
        return data.substr(from, to - from);
    }

    Node* append_copy(Node* node, Node* parent) {
        if (node->getNodeType() == Node::DOCUMENT_FRAGMENT_NODE) return parent;
        const std::string part = has_data(node) ? part_of(node) : "";
        Node* const copy = tree.drop(node->cloneNode(false));
        if (has_data(node)) copy->setNodeValue(part.c_str());
        Node* const place = tree.document->createDocumentFragment();
        place->appendChild(copy);
        parent->appendChild(place);
        tree.parser.freeNode(place);
        return copy;
    }

    void copy_selected(Node* node, Node* parent) {
        ++counter;
        if (node->getNodeType() == Node::DOCUMENT_TYPE_NODE) {
            throw DOMException(DOMException::HIERARCHY_REQUEST_ERR, "document type can't clone");
        }
        Node* const copy = selected(counter) ? append_copy(node, parent) : nullptr;
        for (int i = 0; i < child_count(node); ++i) {
            copy_selected(node->getChildNodes()->item(i), copy != nullptr ? copy : parent);
        }
        ++counter;
        if (copy == nullptr && selected(counter)) append_copy(node, parent);
    }

    void collect_selected(Node* node) {
        ++counter;
        const std::size_t mark = queue.size();
        for (int i = 0; i < child_count(node); ++i) {
            collect_selected(node->getChildNodes()->item(i));
        }
        if (selected(counter)) {
            queue.resize(mark);
            queue.push_back(node);
        }
        ++counter;
    }

    void gather_text(Node* node, std::string& out) {
        ++counter;
        if (selected(counter)) {
            if (has_data(node)) out += part_of(node);
            if (node->getNodeType() == 1) out += '<' + plain(node->getNodeName()) + '>';
        }
        for (int i = 0; i < child_count(node); ++i) {
            gather_text(node->getChildNodes()->item(i), out);
        }
        ++counter;
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

    std::string data() { return '\'' + std::string("xyzw").substr(as_size(below(5))) + '\''; }
    static std::size_t as_size(int count) { return static_cast<std::size_t>(count); }

    std::string node(int depth) {
        const char* const parents[] = {"a", "b", "c[k='1']", "d", "e", "&r", "#"};
        const char* const leaves[] = {"", "", "", "=", "!", "?t"};
        if (depth == 0 || below(2) == 0) return leaves[below(6)] + data();
        return parents[below(depth < 3 ? 7 : 5)] + ('(' + nodes(depth - 1) + ')');
    }
};

void collect(Node* node, std::vector<Node*>& nodes) {
    nodes.push_back(node);
    for (int i = 0; i < child_count(node); ++i) collect(node->getChildNodes()->item(i), nodes);
}

// One of two equal trees, the one for the library and the other for the model.
struct Twin {
    Twin(const std::string& text, const std::string& loose) : tree(text.c_str()) {
        collect(tree.document, nodes);
        collect(tree.drop(tree.make(loose.c_str())), nodes);
        // Text can have children, which go there in a fragment.
        Node* const fragment = tree.drop(tree.make("#(f('x'))"));
        for (Node* const node : nodes) {
            if (!has_data(node) || node->getNodeValue() != "xyzw") continue;
            node->appendChild(fragment);
            collect(node->getFirstChild(), nodes);
            break;
        }
    }

    // All trees in which the nodes now are.
    std::string text() const {
        std::set<const Node*> shown;
        std::string out;
        for (Node* const node : nodes) {
            const Node* const root = root_of(node);
            if (shown.insert(root).second) out += tree_text(root) + '\n';
        }
        return out;
    }

    std::string point(const Node* node, int offset) const {
        const auto at = std::find(nodes.begin(), nodes.end(), node) - nodes.begin();
        return std::to_string(at) + ':' + std::to_string(offset) + ' ';
    }

    Tree tree;
    std::vector<Node*> nodes;
};

class RandomRanges {
public:
    explicit RandomRanges(unsigned seed)
        : dice(seed),
          text((dice.below(5) == 0 ? "%d " : "") + ("a(" + dice.nodes(4) + ") b(") + dice.nodes(3) +
               ')'),
          loose("#(" + dice.nodes(3) + ')'),
          ours(text, loose),
          theirs(text, loose) {}
    RandomRanges(const RandomRanges&) = delete;
    RandomRanges& operator=(const RandomRanges&) = delete;
    ~RandomRanges() {
        for (Range* const range : ranges) ours.tree.document->freeRange(range);
    }

    void run() {
        SCOPED_TRACE(text + loose);
        for (int i = 0; i < 6; ++i) {
            set_points(i % 2);
            check_reading();
        }
        change_tree();
        check_reading();
        compare([&] { ranges[0]->deleteContents(); }, [&] { models[0].remove(); });
        EXPECT_EQ(state(), model_state());
        EXPECT_EQ(ours.text(), theirs.text());
        check_reading();
    }

private:
    Dice dice;
    const std::string text;
    const std::string loose;
    Twin ours;
    Twin theirs;
    Range* const ranges[2] = {ours.tree.document->createRange(), ours.tree.document->createRange()};
    Model models[2] = {Model(theirs.tree), Model(theirs.tree)};

    // Sets each point anew, most often near the last one.
    void set_points(int which) {
        const int count = static_cast<int>(ours.nodes.size());
        int at = dice.below(count);
        for (const bool isStart : {true, false}) {
            if (dice.below(3) == 0) at = dice.below(count);
            at = (at + dice.below(4)) % count;
            Node* const node = ours.nodes[static_cast<std::size_t>(at)];
            if (node->getNodeType() == Node::DOCUMENT_TYPE_NODE) continue;
            const int most = has_data(node) ? node->getNodeValue().length() : child_count(node);
            const int offset = dice.below(most + 1);
            const Point point = {theirs.nodes[static_cast<std::size_t>(at)], offset};
            isStart ? ranges[which]->setStart(node, offset) : ranges[which]->setEnd(node, offset);
            isStart ? models[which].set_start(point) : models[which].set_end(point);
            ASSERT_EQ(state(), model_state());
        }
    }

    // Takes out a node or shortens a text behind the ranges' back.
    void change_tree() {
        for (int i = dice.below(3); i > 0; --i) {
            const auto at =
                static_cast<std::size_t>(dice.below(static_cast<int>(ours.nodes.size())));
            for (Twin* const twin : {&ours, &theirs}) {
                Node* const node = twin->nodes[at];
                if (has_data(node)) {
                    node->setNodeValue(plain(node->getNodeValue()).substr(0, 1).c_str());
                } else if (node->getParentNode() != nullptr) {
                    twin->tree.drop(node->getParentNode()->removeChild(node));
                }
            }
        }
    }

    std::string state() const {
        std::string out;
        for (const Range* const range : ranges) {
            out += ours.point(range->getStartContainer(), range->getStartOffset()) +
                   ours.point(range->getEndContainer(), range->getEndOffset());
        }
        return out;
    }

    std::string model_state() const {
        std::string out;
        for (const Model& model : models) {
            out += theirs.point(model.start.node, model.start.offset) +
                   theirs.point(model.end.node, model.end.offset);
        }
        return out;
    }

    template <typename Action, typename ModelAction>
    static void compare(Action action, ModelAction modelAction) {
        EXPECT_EQ(raised_by(action), raised_by(modelAction));
    }

    void check_reading() {
        SCOPED_TRACE(state());
        for (int how = 0; how < 4; ++how) {
            int order = 0;
            int modelOrder = 0;
            compare([&] { order = ranges[0]->compareBoundaryPoints(how, ranges[1]); },
                    [&] { modelOrder = models[0].compare(how, models[1]); });
            EXPECT_EQ(order, modelOrder) << how;
        }
        for (const int which : {0, 1}) {
            std::string read[2];
            std::string modelRead[2];
            compare([&] { read[0] = plain(ranges[which]->toString()); },
                    [&] { modelRead[0] = models[which].text(); });
            compare([&] { read[1] = tree_text(ours.tree.drop(ranges[which]->cloneContents())); },
                    [&] { modelRead[1] = models[which].clone(); });
            EXPECT_EQ(read[0], modelRead[0]);
            EXPECT_EQ(read[1], modelRead[1]);
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
