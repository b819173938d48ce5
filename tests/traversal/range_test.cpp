// Ranges.
//
// Trees are the texts of tree_text.h with the points of a range in them: < is its start and > its
// end, among the children of a node or in the data of one; { and } are those of a second range.
#include <functional>
#include <map>

#include <gtest/gtest.h>

#include "support/tree_text.h"

namespace qvox_test {
namespace {

using qvox::Node;
using qvox::Range;
using qvox::Xstring;

constexpr const char* POINTS = "<>{}";

// With each point that stands among children as a comment that holds nothing else.
std::string with_point_nodes(const std::string& marked) {
    std::string out;
    bool quoted = false;
    for (const char c : marked) {
        quoted ^= c == '\'';
        const bool isPoint = std::string(POINTS).find(c) != std::string::npos;
        out += isPoint && !quoted ? std::string("!'") + c + "'" : std::string(1, c);
    }
    return out;
}

// A tree with up to two ranges on it.
class MarkedTree {
public:
    explicit MarkedTree(const std::string& marked) : tree(with_point_nodes(marked).c_str()) {
        take_points(tree.document);
        if (points.count('<') != 0) set(*range, '<', '>');
        if (points.count('{') != 0) set(*source, '{', '}');
    }
    MarkedTree(const MarkedTree&) = delete;
    MarkedTree& operator=(const MarkedTree&) = delete;
    ~MarkedTree() {
        tree.document->freeRange(range);
        tree.document->freeRange(source);
    }

    // The tree with the points of the range; behind it other trees in which these stand.
    std::string text() {
        EXPECT_EQ(range->getCollapsed(), range->getStartContainer() == range->getEndContainer() &&
                                             range->getStartOffset() == range->getEndOffset());
        const std::function<void()> takeEnd =
            put_point(range->getEndContainer(), range->getEndOffset(), ">");
        const std::function<void()> takeStart =
            put_point(range->getStartContainer(), range->getStartOffset(), "<");
        std::string out = tree.text();
        std::set<const Node*> shown = {tree.document};
        for (const Node* root : {range->getStartContainer(), range->getEndContainer()}) {
            while (root->getParentNode() != nullptr) root = root->getParentNode();
            if (shown.insert(root).second) out += " + " + tree_text(root);
        }
        takeStart();
        takeEnd();
        for (const char point : {'<', '>'}) {
            const std::string node = std::string("!'") + point + "'";
            const std::size_t at = out.find(node);
            if (at != std::string::npos) out.replace(at, node.size(), 1, point);
        }
        return out;
    }

    Tree tree;
    Range* const range = tree.document->createRange();
    Range* const source = tree.document->createRange();

private:
    std::map<char, std::pair<Node*, int>> points;

    void set(Range& marked, char start, char end) {
        marked.setStart(points[start].first, points[start].second);
        marked.setEnd(points[end].first, points[end].second);
    }

    void take_points(Node* node) {
        std::string data = plain(node->getNodeValue());
        for (std::size_t at = 0; (at = data.find_first_of(POINTS)) != std::string::npos;) {
            points[data[at]] = {node, static_cast<int>(at)};
            data.erase(at, 1);
            node->setNodeValue(data.c_str());
        }
        const qvox::NodeList& children = *node->getChildNodes();
        for (int i = 0; i < children.getLength();) {
            Node* const child = children.item(i);
            const std::string value = plain(child->getNodeValue());
            if (value.size() == 1 && value.find_first_of(POINTS) == 0 &&
                child->getNodeType() == Node::COMMENT_NODE) {
                points[value[0]] = {node, i};
                tree.parser.freeNode(node->removeChild(child));
            } else {
                take_points(child);
                ++i;
            }
        }
    }

    // Shows a point in the tree, and returns what undoes that.
    std::function<void()> put_point(Node* container, int offset, const char* point) {
        if (container->getChildNodes()->getLength() == 0 && !container->getNodeValue().isNull()) {
            const Xstring before = container->getNodeValue();
            container->setNodeValue(
                plain(before).insert(static_cast<std::size_t>(offset), point).c_str());
            return [container, before] { container->setNodeValue(before); };
        }
        Node* const node = tree.document->createComment(point);
        container->insertBefore(node, container->getChildNodes()->item(offset));
        return [this, container, node] { tree.parser.freeNode(container->removeChild(node)); };
    }
};

// The text of a fragment, which is freed.
std::string taken(Tree& tree, Node* fragment) { return tree_text(tree.drop(fragment)); }

struct Content {
    const char* before;
    const char* copy;    // of cloneContents and extractContents, or what they raise
    const char* string;  // of toString
    const char* after;   // deleteContents
};

TEST(Range, Content) {
    const Content cases[] = {
        // Within one node.
        {"a(< 'foo' b('bar') >)", "#('foo' b('bar'))", "foo<b>bar", "a(< >)"},
        {"a('a<bc>d')", "#('bc')", "bc", "a('a<>d')"},
        {"a(< b('x') > c)", "#(b('x'))", "<b>x", "a(< > c)"},
        {"a('x' < > b)", "#", "", "a('x' < > b)"},
        {"a('x<>y')", "#('')", "", "a('x<>y')"},
        {"a('<>')", "#('')", "", "a('<>')"},
        {"< a >", "#(a)", "<a>", "< >"},
        {"< >", "#", "", "< >"},
        // Siblings.
        {"a('a<bc' 'de>f')", "#('bc' 'de')", "bcde", "a('a<>' 'f')"},
        {"a('x' < 'y' '>z')", "#('y' '')", "y", "a('x' < > 'z')"},
        {"a('x<' 'y' > 'z')", "#('' 'y')", "y", "a('x<>' 'z')"},
        {"a(!'1<2' b ='34' ?t'5>6')", "#(!'2' b ='34' ?t'5')", "2<b>345", "a(!'1<>' ?t'6')"},
        {"a(='1<2' ?u'x' !'3>4')", "#(='2' ?u'x' !'3')", "2x3", "a(='1<>' !'4')"},
        {"a(< &e('x' b) 'y>z')", "#(&e('x' b) 'y')", "x<b>y", "a(< > 'z')"},
        {"a(< c d e f g h i j k >)", "#(c d e f g h i j k)", "<c><d><e><f><g><h><i><j><k>",
         "a(< >)"},
        {"a(o '1<2' f g h i j k l m b('c' 'd>e') n)", "#('2' f g h i j k l m b('c' 'd'))",
         "2<f><g><h><i><j><k><l><m><b>cd", "a(o '1<>' b('e') n)"},
        // A start inside of elements that end in the range: their content, empty copies behind it;
        // deleting takes them as a whole.
        {"a(b('x<y' c) 'z' > d)", "#('y' c b 'z')", "y<c>z", "a(d) + b('x<>y' c)"},
        {"a(b[x='1'](c d(< 'e')) f >)", "#('e' d b[x='1'] f)", "e<f>",
         "a + b[x='1'](c d(< > 'e'))"},
        {"a(b(c('x' < d) e) f > g)", "#(d c e b f)", "<d><e><f>", "a(g) + b(c('x' < > d) e)"},
        // An end inside of elements that begin in it: they are copied and stay.
        {"a('x' < 'y' b('c' 'd>e' 'f'))", "#('y' b('c' 'd'))", "y<b>cd", "a('x' < > b('e' 'f'))"},
        {"a(< b(c(d > e)))", "#(b(c(d)))", "<b><c><d>", "a(< > b(c(e)))"},
        {"a(b < > c)", "#", "", "a(b < > c)"},
        {"a(b < c(> d))", "#(c)", "<c>", "a(b < > c(d))"},
        // Both.
        {"a(b(p('1<2') '3') c('4' q('5>6') '7'))", "#('2' p '3' b c('4' q('5')))", "23<c>4<q>5",
         "a(c(q('6') '7')) + b(p('1<>2') '3')"},
        // A start at the end of an element has the closing tag of the last child in it.
        {"a(b('x' c('y') <) d >)", "#(c b d)", "<d>", "a + b('x' c('y') < >)"},
        {"a(b('xy' <) d > e)", "#('xy' b d)", "<d>", "a(e) + b('xy' < >)"},
        {"a(b('x' <) > c)", "#('x' b)", "", "a(c) + b('x' < >)"},
        {"a(b('x' <) >)", "#('x')", "", "a + b('x' < >)"},
        {"a(b(c(d <) >) e)", "#(d)", "", "a(b e) + c(d < >)"},
        // Points in elements without children.
        {"a(b(<) 'x' > c)", "#(b 'x')", "x", "a(b(< >) c)"},
        {"a(< 'x' b(>) c)", "#('x')", "x", "a(< > b c)"},
        {"a(b(< >) c)", "#", "", "a(b(< >) c)"},
        {"a(b(<) c(>))", "#(b)", "", "a(b(< >) c)"},
        {"a(b(<) > c)", "#(b)", "", "a(b(< >) c)"},
        {"a(b < c(>))", "#", "", "a(b < > c)"},
        {"a(b(<) >)", "#", "", "a(b(< >))"},
        {"a(b(c(<)) 'x' >)", "#(c b 'x')", "x", "a + b(c(< >))"},
        // Points that meet: the end excludes the text that holds the start.
        {"a(b > '<xy')", "#", "", "a(b '<>xy')"},
        // A document type fails copying wherever it is below the common ancestor.
        {"%d < a('x') >", "DOM 3 document type can't clone", "<a>x", "%d < >"},
        {"a < !'x' > %d", "DOM 3 document type can't clone", "x", "a < > %d"},
        {"< > %d a", "DOM 3 document type can't clone", "", "< > %d a"},
        {"< %d > a", "DOM 3 document type can't clone", "", "< > a"},
        {"%d a(< 'x' >)", "#('x')", "x", "%d a(< >)"},
        // A fragment in the place of a child gives its content.
        {"a(< #('x' #(b)) 'y>z')", "#('x' b 'y')", "x<b>y", "a(< > 'z')"},
        {"a(#('w' 'x<y') 'z' >)", "#('y' 'z')", "yz", "a + #('w' 'x<>y')"},
    };
    for (const Content& test : cases) {
        SCOPED_TRACE(test.before);
        MarkedTree copied(test.before);
        const std::string before = copied.text();
        std::string copy;
        std::string raised =
            raised_by([&] { copy = taken(copied.tree, copied.range->cloneContents()); });
        EXPECT_EQ(raised + copy, test.copy);
        EXPECT_EQ(plain(copied.range->toString()), test.string);
        EXPECT_FALSE(copied.range->toString().isNull());
        EXPECT_EQ(copied.text(), before);
        MarkedTree deleted(test.before);
        deleted.range->deleteContents();
        const std::string after = std::string("/(") + test.after;
        const std::size_t beside = after.find(" + ");
        EXPECT_EQ(deleted.text(), beside == std::string::npos
                                      ? after + ')'
                                      : std::string(after).insert(beside, ")"));
        MarkedTree extracted(test.before);
        copy = "";
        raised =
            raised_by([&] { copy = taken(extracted.tree, extracted.range->extractContents()); });
        EXPECT_EQ(raised + copy, test.copy);
        EXPECT_EQ(extracted.text(), raised.empty() ? deleted.text() : before);
    }
}

TEST(Range, Comparison) {
    const struct {
        const char* tree;
        int results[4];  // of START_TO_START and so on
    } cases[] = {
        {"a(< { b > } c)", {0, 1, 0, -1}},
        {"a(< b > { c })", {-1, 0, -1, -1}},
        {"a(b({ 'x' } <) > c)", {1, 1, 1, 0}},
        {"a(b({ 'x' <) > } c)", {1, 1, 0, -1}},
        {"a(b(c(< 'x') d) > {e })", {-1, 0, -1, -1}},
        {"a({ b(c(< d >)) })", {1, 1, -1, -1}},
        // Offsets in a text count where this range starts in one, for whatever points meet.
        {"a('<x{y>z}')", {-1, 1, -1, -1}},
        {"a(='{x}y<z>')", {1, 1, 1, 1}},
        {"a(< {'x>y}')", {0, 0, 0, 0}},
        {"a(c {'x<y>' })", {0, 1, -1, -1}},
        {"a(c < '{x>y' })", {0, 0, -1, -1}},
        // Elements without children.
        {"a(< b({ }) > c)", {-1, 1, 1, -1}},
        {"a(b(< >) { c })", {-1, -1, -1, -1}},
        {"a(b(< {} >))", {0, 0, 0, 0}},
        {"{ < > a }", {0, 0, -1, -1}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.tree);
        MarkedTree marked(test.tree);
        for (int how = 0; how < 4; ++how) {
            EXPECT_EQ(marked.range->compareBoundaryPoints(how, marked.source), test.results[how]);
        }
        for (const int how : {-1, 4, 7}) {
            EXPECT_EQ(marked.range->compareBoundaryPoints(how, marked.source), 0);
        }
    }
}

TEST(Range, ComparisonOfOtherTrees) {
    const std::string refusal = "DOM 4 different root container";
    MarkedTree one("a(< b >)");
    MarkedTree two("a(< b >)");
    const auto compare = [&](Range* source) {
        return raised_by([&] { one.range->compareBoundaryPoints(7, source); });
    };
    EXPECT_EQ(compare(two.range), refusal);
    EXPECT_EQ(compare(nullptr), refusal);
    EXPECT_EQ(compare(one.range), "");
    one.source->detach();
    EXPECT_EQ(compare(one.source), refusal);
}

enum class Call {
    SetStart,
    SetEnd,
    StartBefore,
    StartAfter,
    EndBefore,
    EndAfter,
    Select,
    SelectContents,
    Collapse
};

std::string call(Range& range, Call which, Node* node, int offset) {
    return raised_by([&] {
        switch (which) {
            case Call::SetStart: return range.setStart(node, offset);
            case Call::SetEnd: return range.setEnd(node, offset);
            case Call::StartBefore: return range.setStartBefore(node);
            case Call::StartAfter: return range.setStartAfter(node);
            case Call::EndBefore: return range.setEndBefore(node);
            case Call::EndAfter: return range.setEndAfter(node);
            case Call::Select: return range.selectNode(node);
            case Call::SelectContents: return range.selectNodeContents(node);
            case Call::Collapse: return range.collapse(offset != 0);
        }
    });
}

TEST(Range, SettingPoints) {
    const char* const badOffset = "DOM 1 invalid offset";
    const char* const badAncestor = "RANGE 2 invalid ancestor type";
    const char* const badType = "RANGE 2 invalid node type";
    const struct {
        const char* before;
        Call call;
        const char* node;
        int offset;
        const char* after;  // or what is raised
    } cases[] = {
        {"a(< 'x' b('y') > c)", Call::SetStart, "b", 1, "a('x' b('y' <) > c)"},
        {"a('x' < b > c)", Call::SetStart, "a", 2, "a('x' b < > c)"},
        {"a('x' < b > c)", Call::SetStart, "a", 3, "a('x' b c < >)"},
        {"a('x' < b > c)", Call::SetEnd, "a", 0, "a(< > 'x' b c)"},
        {"a('x' < b > c)", Call::SetEnd, "c", 0, "a('x' < b c(>))"},
        {"a(b(<) c >)", Call::SetEnd, "a", 0, "a(< > b c)"},
        {"a(b(<) c >)", Call::SetEnd, "a", 1, "a(b(<) > c)"},
        {"a(b < c >)", Call::SetEnd, "b", 0, "a(b(< >) c)"},
        {"a(b(c(<) d) >)", Call::SetStart, "/", 1, "a(b(c d)) < >"},
        {"a(< 'xyz' >)", Call::SetStart, "xyz", 3, "a('xyz<' >)"},
        {"a(< 'xyz' >)", Call::SetStart, "xyz", 4, badOffset},
        {"a(< 'xyz' >)", Call::SetEnd, "xyz", 4, badOffset},
        {"a(< 'xyz' >)", Call::SetEnd, "xyz", -1, badOffset},
        {"a(< b >)", Call::SetStart, "a", 2, badOffset},
        {"a(< b >)", Call::SetEnd, "b", 1, badOffset},
        {"a(?t'abc' < >)", Call::SetEnd, "abc", 3, "a(?t'abc<>')"},
        {"a(?t'abc' < >)", Call::SetEnd, "abc", 4, badOffset},
        {"a(< !'abc' >)", Call::SetStart, "abc", 3, "a(!'abc<' >)"},
        // Points that meet stay apart, unless a start in a text has the larger offset.
        {"a(b < 'xy' >)", Call::SetEnd, "xy", 0, "a(b < '>xy')"},
        {"a(b < > 'xy')", Call::SetStart, "xy", 1, "a(b > 'x<y')"},
        {"a(b < > 'xy')", Call::SetStart, "xy", 2, "a(b 'xy<>')"},
        {"a('<>x' b)", Call::StartBefore, "x", 0, "a(< '>x' b)"},
        {"a('x' < b > c)", Call::StartBefore, "x", 0, "a(< 'x' b > c)"},
        {"a('x' < b > c)", Call::StartAfter, "b", 0, "a('x' b < > c)"},
        {"a('x' < b > c)", Call::StartAfter, "c", 0, "a('x' b c < >)"},
        {"a('x' < b > c)", Call::EndBefore, "x", 0, "a(< > 'x' b c)"},
        {"a('x' < b > c)", Call::EndBefore, "c", 0, "a('x' < b > c)"},
        {"a('x' < b > c)", Call::EndAfter, "c", 0, "a('x' < b c >)"},
        {"a('x' < b > c)", Call::EndAfter, "a", 0, "a('x' < b c) >"},
        {"a('x' < b(c) >)", Call::Select, "c", 0, "a('x' b(< c >))"},
        {"a('x' < >)", Call::Select, "a", 0, "< a('x') >"},
        {"a(b 'x' < >)", Call::Select, "x", 0, "a(b < 'x' >)"},
        {"a('x' < >)", Call::SelectContents, "a", 0, "a(< 'x' >)"},
        {"a('xyz' < >)", Call::SelectContents, "xyz", 0, "a('<xyz>')"},
        {"a(b < > c)", Call::SelectContents, "c", 0, "a(b c(< >))"},
        {"a(?t'xy' < >)", Call::SelectContents, "xy", 0, "a(?t'<xy>')"},
        {"a(< b('x>y'))", Call::Collapse, "a", 0, "a(b('x<>y'))"},
        {"a(< b('x>y'))", Call::Collapse, "a", 1, "a(< > b('xy'))"},
        // A document type may be selected, and hold a start; nothing else goes below it.
        {"%d a(< >)", Call::StartBefore, "d", 0, "< %d a(>)"},
        {"%d a(< >)", Call::Select, "d", 0, "< %d > a"},
        {"%d a(< >)", Call::SetStart, "d", 0, "%d(<) a(>)"},
        {"%d a(< >)", Call::SetStart, "d", 1, badOffset},
        {"%d a(< >)", Call::SetEnd, "d", 0, badType},
        {"%d(!'c') a(< >)", Call::SelectContents, "d", 0, "%d(< !'c' >) a"},
        {"%d(!'c') a(< >)", Call::StartBefore, "c", 0, "%d(< !'c') a(>)"},
        {"%d(!'c') a(< >)", Call::EndAfter, "c", 0, "%d(!'c' < >) a"},
        {"%d(!'c') a(< >)", Call::SetStart, "c", 0, badAncestor},
        {"%d(!'c') a(< >)", Call::SetEnd, "c", 0, badAncestor},
        {"%d(!'c') a(< >)", Call::Select, "c", 0, badAncestor},
        {"%d(!'c') a(< >)", Call::SelectContents, "c", 0, badAncestor},
    };
    for (const auto& test : cases) {
        MarkedTree marked(test.before);
        SCOPED_TRACE(std::string(test.before) + " : " + test.node);
        const std::string before = marked.text();
        Node* const node = *test.node == '/' ? marked.tree.document : marked.tree[test.node];
        const std::string raised = call(*marked.range, test.call, node, test.offset);
        EXPECT_EQ(raised.empty() ? marked.text().substr(1) : raised,
                  raised.empty() ? '(' + std::string(test.after) + ')' : test.after);
        if (!raised.empty()) {
            EXPECT_EQ(marked.text(), before);
        }
    }
}

// Nodes of each type without parent, and null.
TEST(Range, SettingPointsByType) {
    for (int type = 0; type <= 12; ++type) {
        SCOPED_TRACE(type);
        MarkedTree marked("a(< b >)");
        Node* const node = type == 0 ? nullptr : marked.tree.make_type(type);
        const std::string badType = "RANGE 2 invalid node type";
        const std::string whenNull = type == 0 ? badType : "";
        const bool isClosed = type == 0 || type == 6 || type == 10 || type == 12;
        for (const Call beside :
             {Call::StartBefore, Call::StartAfter, Call::EndBefore, Call::EndAfter}) {
            EXPECT_EQ(call(*marked.range, beside, node, 0), badType);
        }
        EXPECT_EQ(call(*marked.range, Call::Select, node, 0), "RANGE 2 invalid select node type");
        EXPECT_EQ(call(*marked.range, Call::SetEnd, node, 0), isClosed ? badType : "");
        EXPECT_EQ(marked.range->getStartContainer(), isClosed ? marked.tree["a"] : node);
        EXPECT_EQ(call(*marked.range, Call::SelectContents, node, 0), whenNull);
        marked.range->selectNodeContents(marked.tree["a"]);
        EXPECT_EQ(call(*marked.range, Call::SetStart, node, 0), whenNull);
        EXPECT_EQ(marked.range->getEndContainer(), node == nullptr ? marked.tree["a"] : node);
        marked.range->selectNodeContents(marked.tree["a"]);
        if (type != 0) marked.tree.parser.freeNode(node);
    }
}

// Points beside a node are possible below an attribute and a fragment, but not below a loose
// element; a point in another tree takes the other point along.
TEST(Range, OtherTrees) {
    MarkedTree marked("a[x='1'](< b >)");
    Tree other("c('t')");
    Range& range = *marked.range;
    const auto state = [&](const Node* node, int offset) {
        return range.getStartContainer() == node && range.getEndContainer() == node &&
               range.getStartOffset() == offset && range.getCollapsed();
    };
    range.setEnd(other["t"], 1);
    EXPECT_TRUE(state(other["t"], 1));
    range.setStartAfter(marked.tree["b"]);
    EXPECT_TRUE(state(marked.tree["a"], 1));
    Node* const fragment = marked.tree.drop(marked.tree.make("#('u')"));
    range.setEndAfter(fragment->getFirstChild());
    EXPECT_TRUE(state(fragment, 1));
    qvox::Attr* const attribute = marked.tree.element("a")->getAttributeNode("x");
    attribute->setValue("2");
    range.setStartBefore(attribute->getFirstChild());
    EXPECT_TRUE(state(attribute, 0));
    range.setEndAfter(attribute->getFirstChild());
    EXPECT_EQ(taken(marked.tree, range.extractContents()), "#('2')");
    EXPECT_EQ(tree_text(attribute), "@x='2'");
    Node* const loose = marked.tree.drop(marked.tree.make("e(f)"));
    EXPECT_EQ(call(range, Call::EndBefore, loose->getFirstChild(), 0), "RANGE 2 invalid node type");
    EXPECT_EQ(call(range, Call::Select, loose, 0), "RANGE 2 invalid select node type");
    EXPECT_TRUE(state(attribute, 0));
    // Copies belong to the document of what they are copies of.
    range.selectNodeContents(other["c"]);
    Node* const copy = marked.tree.drop(range.cloneContents());
    EXPECT_EQ(copy->getOwnerDocument(), marked.tree.document);
    EXPECT_EQ(copy->getFirstChild()->getOwnerDocument(), other.document);
}

// A node is made from its text, or is one of the tree where that begins with ^.
struct Insertion {
    const char* before;
    const char* node;
    const char* after;
    const char* raised = "";
};

const char* const unfit = "DOM 3 start container is not acceptable as child node";
const char* const unacceptable = "DOM 3 child node is not acceptable";
const char* const unsplittable = "DOM 3 start container can't be split";

void check_insertion(const Insertion& test, void (Range::*operation)(Node*)) {
    SCOPED_TRACE(std::string(test.before) + " : " + test.node);
    MarkedTree marked(test.before);
    Node* const node = *test.node == '^' ? marked.tree[test.node + 1]
                                         : marked.tree.drop(marked.tree.make(test.node));
    EXPECT_EQ(raised_by([&] { (marked.range->*operation)(node); }), test.raised);
    EXPECT_EQ(marked.text(), test.after);
    if (node->getParentNode() == nullptr) marked.tree.drop(node);
}

TEST(Range, InsertNode) {
    const Insertion cases[] = {
        {"a('ab<>cd')", "e", "/(a('ab<>' e 'cd'))"},
        {"a('ab<>')", "e", "/(a('ab<>' e ''))"},
        {"a(='ab<>cd')", "e", "/(a(='ab<>' e 'cd'))"},
        {"a('x' b < >)", "e", "/(a('x' b < > e))"},
        {"a(< 'x' > b)", "e", "/(a(< e > 'x' b))"},
        {"a(< >)", "e('x')", "/(a(< > e('x')))"},
        {"a('x<>y')", "#(e 'f')", "/(a('x<>' e 'f' 'y'))"},
        {"a('x' < >)", "#", "/(a('x' < >))"},
        {"a('x<>y' b(c))", "^c", "/(a('x<>' c 'y' b))"},
        {"a(#(< 'x' > b))", "^b", "/(a(#(< b > 'x')))"},
        {"a(#(< b c > d))", "^b", "/(a(#(< c d >)))", "DOM 8 ref child node not found"},
        {"a(< b >)", "'t'", "/(a(< b >))", unfit},
        {"a('x<>y')", "!'c'", "/(a('x<>y'))", unfit},
        {"< > a", "e", "/(< > a)", unfit},
        {"a(b(< >))", "^b", "/(a(b(< >)))", unfit},
        {"a(b(< c > d))", "^c", "/(a(b(< c > d)))", unfit},
        {"a(b(< > c(d)))", "^d", "/(a(b(< > c(d))))", unfit},
        {"a(b(< > c))", "^a", "/(a(b(< > c)))", unacceptable},
        {"a(b('x<>y'))", "^b", "/(a(b('x<>y')))", unacceptable},
        {"a(!'x<>y')", "e", "/(a(!'x<>y'))", unsplittable},
        {"a(?t'x<>y')", "#", "/(a(?t'x<>y'))", unsplittable},
    };
    for (const Insertion& test : cases) check_insertion(test, &Range::insertNode);

    // A start in a fragment lets text in; a text without parent can't be split.
    Tree tree;
    Node* const fragment = tree.drop(tree.make("#(a)"));
    Range* const range = tree.document->createRange();
    range->setStart(fragment, 0);
    range->insertNode(tree.make("'t'"));
    EXPECT_EQ(tree_text(fragment), "#('t' a)");
    Node* const text = tree.drop(tree.make("'xy'"));
    range->setStart(text, 1);
    Node* const element = tree.drop(tree.make("e"));
    EXPECT_EQ(raised_by([&] { range->insertNode(element); }),
              "DOM 3 start container has no parent");
    EXPECT_EQ(tree_text(text), "'xy'");
    tree.document->freeRange(range);
}

TEST(Range, SurroundContents) {
    const char* const partial = "RANGE 1 surround range is partially selected";
    const char* const badType = "RANGE 2 invalid node type";
    const Insertion cases[] = {
        {"a('x<yz>w' c)", "e", "/(a('x' < e('yz') > 'w' c))"},
        {"a('x' < b 'y' > c)", "e('k')", "/(a('x' < e('k' b 'y') > c))"},
        {"a('1<2' b '3>4')", "e", "/(a('1' < e('2' b '3') > '' '4'))"},
        {"a(< >)", "e", "/(a(< e >))"},
        {"a('x<1' b('2') '3>y')", "^b", "/(a('x' < b('2' '1' b('2') '3') > '' 'y'))"},
        // The start container goes as a whole, and its range with it.
        {"a(b('1' < '2') c('3' > '4'))", "e", "/(a(c('4'))) + b('1' < e('2' b c('3')) > '2')"},
        {"a('x' < b('y' >))", "e", "/(a('x' < b('y' >)))", partial},
        {"a(b('x<y') 'z>')", "e", "/(a(b('x<y') 'z>'))", partial},
        {"a(b('x<y>z'))", "^b", "/(a(b('x<y>z')))", unacceptable},
        {"a(b(< 'x' >))", "^a", "/(a(b(< 'x' >)))", unacceptable},
        {"a(< 'x' >)", "^x", "/(a(< 'x' >))", unfit},
        {"a(< 'x' >)", "#", "/(a(< 'x' >))", badType},
        {"a(!'x<y>z')", "e", "/(a(!'x<y>z'))", unsplittable},
        {"%d < a >", "e", "/(%d < a >)", unfit},
        {"a(#(< 'x' b 'y' > c))", "^b", "/(a(#(< b('x' b 'y') > c)))"},
        {"a(#(< 'x' > b))", "^b", "/(a(#(< 'x' > b)))", "DOM 8 ref child node not found"},
    };
    for (const Insertion& test : cases) check_insertion(test, &Range::surroundContents);
}

// Nodes that are refused for their type or document, in the order of the checks.
TEST(Range, InsertionByType) {
    const std::string otherDocument = "DOM 4 different owner document";
    for (int type = 0; type <= 12; ++type) {
        SCOPED_TRACE(type);
        MarkedTree marked("a(< b >)");
        Node* const node = type == 0 ? nullptr : marked.tree.make_type(type);
        const auto refusal = [&](const std::set<int>& refused, const char* message) -> std::string {
            if (type == 9 || type == 10) return otherDocument;
            if (refused.count(type) != 0) return std::string("RANGE 2 ") + message;
            return type == 1 || type == 5 || type == 11 ? "" : unfit;
        };
        const std::string inserted = raised_by([&] { marked.range->insertNode(node); });
        EXPECT_EQ(inserted, refusal({0, 2, 6, 9, 12}, "invalid insert node type"));
        MarkedTree again("a(< b >)");
        Node* const parent = type == 0 ? nullptr : again.tree.make_type(type);
        EXPECT_EQ(raised_by([&] { again.range->surroundContents(parent); }),
                  refusal({0, 2, 6, 9, 11, 12}, "invalid node type"));
        EXPECT_EQ(again.tree["b"] == nullptr, false);
        for (Node* const made : {node, parent}) {
            if (made != nullptr && made->getParentNode() == nullptr) {
                marked.tree.parser.freeNode(made);
            }
        }
    }
    MarkedTree marked("a(< b >)");
    Tree other("c");
    EXPECT_EQ(raised_by([&] { marked.range->insertNode(other["c"]); }), otherDocument);
    EXPECT_EQ(raised_by([&] { marked.range->surroundContents(other["c"]); }), otherDocument);
}

TEST(Range, Life) {
    Tree tree("a('xy')");
    Range* const range = tree.document->createRange();
    EXPECT_EQ(range->getStartContainer(), tree.document);
    EXPECT_EQ(range->getEndContainer(), tree.document);
    EXPECT_EQ(range->getStartOffset() + range->getEndOffset(), 0);
    EXPECT_TRUE(range->getCollapsed());
    range->setEnd(tree["xy"], 1);
    EXPECT_EQ(range->getCommonAncestorContainer(), tree.document);
    Range* const clone = range->cloneRange();
    EXPECT_EQ(clone->compareBoundaryPoints(Range::START_TO_START, range), 0);
    EXPECT_EQ(clone->getEndContainer(), tree["xy"]);
    EXPECT_EQ(clone->getEndOffset(), 1);
    EXPECT_FALSE(clone->getCollapsed());
    range->detach();
    EXPECT_EQ(range->getCommonAncestorContainer(), nullptr);
    Node* const a = tree["a"];
    const std::function<void()> calls[] = {
        [&] { range->cloneContents(); },
        [&] { range->cloneRange(); },
        [&] { range->collapse(true); },
        [&] { range->compareBoundaryPoints(7, nullptr); },
        [&] { range->deleteContents(); },
        [&] { range->detach(); },
        [&] { range->extractContents(); },
        [&] { range->getStartContainer(); },
        [&] { range->getStartOffset(); },
        [&] { range->getEndContainer(); },
        [&] { range->getEndOffset(); },
        [&] { range->getCollapsed(); },
        [&] { range->insertNode(nullptr); },
        [&] { range->selectNode(nullptr); },
        [&] { range->selectNodeContents(a); },
        [&] { range->setEnd(a, 0); },
        [&] { range->setEndAfter(nullptr); },
        [&] { range->setEndBefore(a); },
        [&] { range->setStart(nullptr, 9); },
        [&] { range->setStartAfter(a); },
        [&] { range->setStartBefore(a); },
        [&] { range->surroundContents(nullptr); },
        [&] { range->toString(); },
    };
    for (const auto& one : calls) {
        EXPECT_EQ(raised_by(one), "DOM 11 range already detached") << &one - calls;
    }
    tree.document->freeRange(range);
    tree.document->freeRange(clone);
    tree.document->freeRange(nullptr);
}

// What a range detaches can be used until its document is freed.
TEST(Range, DetachedNodes) {
    MarkedTree marked("%d a(< b('x') c > e)");
    Node* const b = marked.tree["b"];
    Node* const c = marked.tree["c"];
    marked.range->deleteContents();
    EXPECT_EQ(tree_text(b), "b('x')");
    EXPECT_EQ(b->getParentNode(), nullptr);
    marked.tree["e"]->appendChild(b);
    marked.tree.parser.freeNode(c);
    EXPECT_EQ(marked.text(), "/(%d a(< > e(b('x'))))");
    Node* const doctype = marked.tree["d"];
    marked.range->selectNode(doctype);
    marked.range->deleteContents();
    EXPECT_EQ(tree_text(doctype), "%d");
    EXPECT_EQ(marked.text(), "/(< > a(e(b('x'))))");
}

TEST(Range, StalePoints) {
    const std::string beyond = "DOM 1 invalid index";
    // A start beyond its text raises, an end there is the end of the text.
    for (const bool isStart : {true, false}) {
        MarkedTree marked(isStart ? "a('wxy<z' b >)" : "a(< b 'wxy>z')");
        Range& range = *marked.range;
        Node* const text = marked.tree["wxyz"];
        text->setNodeValue("w");
        const std::string refused = isStart ? beyond : "";
        EXPECT_EQ(raised_by([&] { marked.tree.document->freeRange(range.cloneRange()); }),
                  "DOM 1 invalid offset");
        EXPECT_EQ(raised_by([&] { range.toString(); }), refused);
        EXPECT_EQ(raised_by([&] { taken(marked.tree, range.cloneContents()); }), refused);
        EXPECT_EQ(raised_by([&] { taken(marked.tree, range.extractContents()); }), refused);
        EXPECT_EQ(marked.tree.text(), isStart ? "/(a('w' b))" : "/(a(''))");
        EXPECT_EQ(raised_by([&] { range.deleteContents(); }), refused);
        Node* const element = marked.tree.drop(marked.tree.make("e"));
        EXPECT_EQ(raised_by([&] { range.insertNode(element); }), refused);
    }
    // Children that are gone: the end of the container.
    MarkedTree marked("a(b c d < e >)");
    for (const char* const name : {"b", "c", "e"}) {
        marked.tree.drop(marked.tree["a"]->removeChild(marked.tree[name]));
    }
    EXPECT_EQ(taken(marked.tree, marked.range->cloneContents()), "#");
    marked.range->insertNode(marked.tree.make("f"));
    EXPECT_EQ(marked.tree.text(), "/(a(d f))");

    // A start that has come behind the end: no content. Containers in different trees: refused.
    MarkedTree moved("a(b('<x') c('y>') d)");
    moved.tree["d"]->appendChild(moved.tree["b"]);
    EXPECT_EQ(taken(moved.tree, moved.range->cloneContents()), "#");
    moved.range->deleteContents();
    EXPECT_EQ(moved.text(), "/(a(c('y') d(b('<>x'))))");
    moved.range->setEndAfter(moved.tree["d"]);
    moved.source->setStart(moved.tree["x"], 0);
    moved.tree.drop(moved.tree["d"]->removeChild(moved.tree["b"]));
    EXPECT_EQ(moved.range->getCommonAncestorContainer(), nullptr);
    const std::string refused = "DOM 9 TreeWalker root is null";
    EXPECT_EQ(raised_by([&] { moved.range->cloneContents(); }), refused);
    EXPECT_EQ(raised_by([&] { moved.range->deleteContents(); }), refused);
    EXPECT_EQ(raised_by([&] { moved.range->toString(); }), refused);
    // As seen from the start's tree, an end in another one is behind everything.
    EXPECT_EQ(moved.source->compareBoundaryPoints(Range::END_TO_START, moved.range), -1);
    EXPECT_EQ(moved.range->compareBoundaryPoints(Range::START_TO_END, moved.source), 1);
}

TEST(Range, DeepTrees) {
    constexpr int DEPTH = 200000;
    Tree tree;
    Node* inner = tree.make("b('x' 'y')");
    Node* const first = inner->getFirstChild();
    Node* const second = inner->getLastChild();
    for (int i = 0; i < DEPTH; ++i) {
        Node* const outer = tree.make("a");
        outer->appendChild(inner);
        inner = outer;
    }
    tree.document->appendChild(inner);
    Range* const range = tree.document->createRange();
    range->setEnd(second, 1);
    range->setStart(first, 0);
    EXPECT_EQ(range->getCommonAncestorContainer(), first->getParentNode());
    range->setStartBefore(inner);
    EXPECT_EQ(range->getCommonAncestorContainer(), tree.document);
    EXPECT_EQ(range->compareBoundaryPoints(Range::START_TO_END, range), 1);
    EXPECT_EQ(range->toString().length(), 3 * DEPTH + 3 + 2);
    Node* const fragment = tree.drop(range->cloneContents());
    const Node* deepest = fragment;
    for (int i = 0; i < DEPTH + 1; ++i) deepest = deepest->getFirstChild();
    EXPECT_EQ(tree_text(deepest), "b('x' 'y')");
    range->deleteContents();
    EXPECT_EQ(tree_text(second->getParentNode()), "b('')");
    // From the innermost text up to the end of the document, where the outermost element closes.
    range->setStart(second, 0);
    range->setEndAfter(inner);
    Node* const moved = tree.drop(range->extractContents());
    EXPECT_EQ(moved->getChildNodes()->getLength(), DEPTH + 1);
    EXPECT_EQ(tree.text(), "/");
    tree.document->freeRange(range);
}

}  // namespace
}  // namespace qvox_test
