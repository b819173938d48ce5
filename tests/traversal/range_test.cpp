// Ranges.
//
// Trees are the texts of tree_text.h with the points of a range in them: < is its start and > its
// end, among the children of a node or in the data of one. The range is called r.
#include "support/script.h"

namespace qvox_test {
namespace {

using qvox::Node;
using qvox::Range;

// With each point that stands among children as a comment that holds nothing else.
std::string with_point_nodes(const std::string& marked) {
    std::string out;
    bool isQuoted = false;
    for (const char c : marked) {
        isQuoted ^= c == '\'';
        const bool isPoint = !isQuoted && (c == '<' || c == '>');
        out += isPoint ? std::string("!'") + c + "'" : std::string(1, c);
    }
    return out;
}

class RangeScript : public Script {
public:
    explicit RangeScript(const std::string& marked, const std::string& besideText = "")
        : Script(with_point_nodes(marked), besideText) {
        take_points(tree.document);
        r->setStart(points[0].first, points[0].second);
        r->setEnd(points[1].first, points[1].second);
    }
    ~RangeScript() override {
        for (Range* const used : {r, s}) tree.document->freeRange(used);
    }

    Range* range(const std::string& word) override { return word == "r" ? r : s; }

    // The trees with the points in them, also those that only the points are in.
    std::string state() override {
        if (r->getCommonAncestorContainer() == nullptr) return Script::state();
        EXPECT_EQ(r->getCollapsed(), r->getStartContainer() == r->getEndContainer() &&
                                         r->getStartOffset() == r->getEndOffset());
        const auto takeEnd = put_point(r->getEndContainer(), r->getEndOffset(), ">");
        const auto takeStart = put_point(r->getStartContainer(), r->getStartOffset(), "<");
        std::string out = Script::state();
        for (const Node* root : {r->getStartContainer(), r->getEndContainer()}) {
            while (root->getParentNode() != nullptr) root = root->getParentNode();
            const std::string text = tree_text(root);
            if (out.find(text) == std::string::npos) out += " + " + text;
        }
        takeStart();
        takeEnd();
        for (const std::string point : {"<", ">"}) {
            const std::size_t at = out.find("!'" + point + "'");
            if (at != std::string::npos) out.replace(at, 4, point);
        }
        return out;
    }

    Range* const r = tree.document->createRange();
    Range* const s = tree.document->createRange();  // for comparisons

private:
    std::pair<Node*, int> points[2] = {{tree.document, 0}, {tree.document, 0}};

    void take_points(Node* node) {
        std::string data = plain(node->getNodeValue());
        for (std::size_t at = 0; (at = data.find_first_of("<>")) != std::string::npos;) {
            points[data[at] == '<' ? 0 : 1] = {node, static_cast<int>(at)};
            node->setNodeValue(data.erase(at, 1).c_str());
        }
        const qvox::NodeList& children = *node->getChildNodes();
        for (int i = 0; i < children.getLength();) {
            Node* const child = children.item(i);
            const std::string text = tree_text(child);
            if (text == "!'<'" || text == "!'>'") {
                points[text == "!'<'" ? 0 : 1] = {node, i};
                tree.parser.freeNode(node->removeChild(child));
            } else {
                take_points(child);
                ++i;
            }
        }
    }

    // Shows a point in the tree, and returns what undoes that.
    std::function<void()> put_point(Node* container, int offset, const char* point) {
        if (!container->hasChildNodes() && !container->getNodeValue().isNull()) {
            const qvox::Xstring before = container->getNodeValue();
            const auto at = static_cast<std::size_t>(std::min(offset, before.length()));
            container->setNodeValue(plain(before).insert(at, point).c_str());
            return [container, before] { container->setNodeValue(before); };
        }
        Node* const node = tree.document->createComment(point);
        Node* const fragment = tree.drop(tree.document->createDocumentFragment());
        fragment->appendChild(node);
        container->insertBefore(fragment, container->getChildNodes()->item(offset));
        return [this, container, node] { tree.parser.freeNode(container->removeChild(node)); };
    }
};

// Trees, calls, and what comes of them.
void check(const char* table) {
    for (const Row& row : cells_of(table, 3)) {
        EXPECT_EQ(RangeScript(row[0]).run(row[1]), row[2]) << row[0] << ": " << row[1];
    }
}

TEST(Range, Content) {
    // A tree, a copy of the content or what copying raises, the content as a string, and the tree
    // without it, where there is something to delete.
    for (const Row& row : cells_of(R"~(
a(< 'foo' b('bar') >) => #('foo' b('bar')) => 'foo<b>bar' => > /(a(< >))
a('a<bc>d') => #('bc') => 'bc' => > /(a('a<>d'))  a('x<>y') => #('') => ''  a('x' < > b) => # => ''
a('a<bc' 'de>f') => #('bc' 'de') => 'bcde' => > /(a('a<>' 'f'))
a(!'1<2' b ='34' ?t'5>6') => #(!'2' b ='34' ?t'5') => '2<b>345' => > /(a(!'1<>' ?t'6'))
# A start inside of elements that end in the range: their content, empty copies behind it; deleting
# takes them as a whole.
a(b[x='1'](c d(< 'e')) f >) => #('e' d b[x='1'] f) => 'e<f>' => > /(a) + b[x='1'](c d(< > 'e'))
# An end inside of elements that begin in it: they are copied and stay.
a('x' < 'y' b('c' 'd>e' 'f')) => #('y' b('c' 'd')) => 'y<b>cd' => > /(a('x' < > b('e' 'f')))
# Both.
a(b(p('1<2') '3') c('4' q('5>6') '7')) => #('2' p '3' b c('4' q('5'))) => '23<c>4<q>5' =>
  > /(a(c(q('6') '7'))) + b(p('1<>2') '3')
# A start at the end of an element has the closing tag of the last child in it.
a(b('x' c('y') <) d >) => #(c b d) => '<d>' => > /(a) + b('x' c('y') < >)
# Points in elements without children, and points that meet.
a(b(<) 'x' > c) => #(b 'x') => 'x' => > /(a(b(< >) c))
a(< 'x' b(>) c) => #('x') => 'x' => > /(a(< > b c))  a(b > '<xy') => # => '' => > /(a(b '<>xy'))
# A document type fails copying wherever it is below the common ancestor.
%d < a('x') > => DOM 3 document type can't clone => '<a>x' => > /(%d < >)
< > %d a => DOM 3 document type can't clone => ''  %d a(< 'x' >) => #('x') => 'x' => > /(%d a(< >))
# A fragment in the place of a child is one in the copy.
a(< #('x' #(b)) 'y>z') => #(#('x' #(b)) 'y') => 'x<b>y' => > /(a(< > 'z'))
)~",
                                   4)) {
        const std::string &tree = row[0], &copy = row[1], &deleted = row[3];
        SCOPED_TRACE(tree);
        RangeScript script(tree);
        EXPECT_EQ(script.run("r cloneContents"), copy);
        EXPECT_EQ(script.run("r toString"), row[2]);
        EXPECT_EQ(RangeScript(tree).run("r deleteContents"), deleted);
        EXPECT_EQ(RangeScript(tree).run("r extractContents"),
                  copy[0] == 'D' || deleted.empty() ? copy : copy + ' ' + deleted);
    }
}

TEST(Range, SettingPoints) {
    check(R"(
a(b < c >) => r setEnd b 0 => > /(a(b(< >) c))
a(< 'xyz' >) => r setStart xyz 4 => DOM 1 invalid offset
a(?t'abc' < >) => r setEnd abc 3 => > /(a(?t'abc<>'))
a(?t'abc' < >) => r setEnd abc 4 => DOM 1 invalid offset
# Points that meet stay apart, unless a start in a text has the larger offset.
a(b < 'xy' >) => r setEnd xy 0 => > /(a(b < '>xy'))
a(b < > 'xy') => r setStart xy 1 => > /(a(b > 'x<y'))
a(b < > 'xy') => r setStart xy 2 => > /(a(b 'xy<>'))
a('x' < b > c) => r setStartBefore x => > /(a(< 'x' b > c))
a('x' < b > c) => r setStartAfter c => > /(a('x' b c < >))
a('x' < b > c) => r setEndBefore x => > /(a(< > 'x' b c))
a('x' < b > c) => r setEndAfter a => > /(a('x' < b c) >)
a('x' < b(c) >) => r selectNode c => > /(a('x' b(< c >)))
a('xyz' < >) => r selectNodeContents xyz => > /(a('<xyz>'))
a(b < > c) => r selectNodeContents c => > /(a(b c(< >)))
a(< b('x>y')) => r collapse false => > /(a(b('x<>y')))
a(< b('x>y')) => r collapse true => > /(a(< > b('xy')))
# A document type may be selected, and hold a start; nothing else goes below it.
%d a(< >) => r setStartBefore d => > /(< %d a(>))  %d a(< >) => r selectNode d => > /(< %d > a)
%d a(< >) => r setStart d 0 => > /(%d(<) a(>))
%d a(< >) => r setEnd d 0 => RANGE 2 invalid node type
%d(!'c') a(< >) => r selectNodeContents d => > /(%d(< !'c' >) a)
%d(!'c') a(< >) => r setEndAfter c => > /(%d(!'c' < >) a)
%d(!'c') a(< >) => r setStart c 0 => RANGE 2 invalid ancestor type
%d(!'c') a(< >) => r selectNode c => RANGE 2 invalid ancestor type
%d(!'c') a(< >) => r selectNodeContents c => RANGE 2 invalid ancestor type
# Points beside a node are possible below an attribute and a fragment, but not below a loose
# element; a point in another tree takes the other point along.
a(< b >) => f: +#('u'); u: f getFirstChild; r setEndAfter u => > /(a(b)) + #('u' < >)
a[x='1'](< b >) => t: a@x appendChild +'t'; r setEndAfter t => > /(a[x='1'('t' < >)](b)) +
  @x='1'('t' !'<' !'>')
a(< b >) => e: +e(f); f: e getFirstChild; r setEndBefore f => RANGE 2 invalid node type
a(< b >) => e: +e; r selectNode e => RANGE 2 invalid select node type
)");
    // Copies belong to the document of what they are copies of.
    RangeScript script("a(< b >)", "c('t')");
    expect_steps(script, R"(
r setEnd t 1 => > /(a(b))/(c('t<>'))  r selectNodeContents c; f: r cloneContents => #('t')
f getOwnerDocument => /  t: f getFirstChild; t getOwnerDocument => //
)");
}

// Nodes of each type without parent, and null.
TEST(Range, ArgumentsByType) {
    for (int type = 0; type <= 12; ++type) {
        SCOPED_TRACE(type);
        RangeScript script("a(< b >)");
        Range* const r = script.r;
        Node* const a = script.node("a");
        const auto made = [&] {
            return type == 0 ? nullptr : script.tree.drop(script.tree.make_type(type));
        };
        Node* const node = made();
        const std::string badType = "RANGE 2 invalid node type";
        const bool isClosed = type == 0 || type == 6 || type == 10 || type == 12;
        for (void (Range::*const beside)(Node*) : {&Range::setStartBefore, &Range::setStartAfter,
                                                   &Range::setEndBefore, &Range::setEndAfter}) {
            EXPECT_EQ(raised_by([&] { (r->*beside)(node); }), badType);
        }
        EXPECT_EQ(raised_by([&] { r->selectNode(node); }), "RANGE 2 invalid select node type");
        EXPECT_EQ(raised_by([&] { r->setEnd(node, 0); }), isClosed ? badType : "");
        EXPECT_EQ(r->getStartContainer(), isClosed ? a : node);
        EXPECT_EQ(raised_by([&] { r->selectNodeContents(node); }), type == 0 ? badType : "");
        r->selectNodeContents(a);
        EXPECT_EQ(raised_by([&] { r->setStart(node, 0); }), type == 0 ? badType : "");
        EXPECT_EQ(r->getEndContainer(), type == 0 ? a : node);

        // Insertion asks for the document first, then for the type.
        const auto refusal = [&](const std::set<int>& refused, const char* message) -> std::string {
            if (type == 9 || type == 10) return "DOM 4 different owner document";
            if (refused.count(type) != 0) return std::string("RANGE 2 ") + message;
            if (type == 1 || type == 5 || type == 11) return {};
            return "DOM 3 start container is not acceptable as child node";
        };
        r->selectNodeContents(a);
        EXPECT_EQ(raised_by([&] { r->insertNode(made()); }),
                  refusal({0, 2, 6, 12}, "invalid insert node type"));
        r->selectNodeContents(a);
        EXPECT_EQ(raised_by([&] { r->surroundContents(made()); }),
                  refusal({0, 2, 6, 11, 12}, "invalid node type"));
    }
    RangeScript script("a(< b >)", "c");
    EXPECT_EQ(script.run("r insertNode c"), "DOM 4 different owner document");
    EXPECT_EQ(script.run("r surroundContents c"), "DOM 4 different owner document");
}

TEST(Range, InsertNode) {
    check(R"(
a('ab<>cd') => r insertNode +e => > /(a('ab<>' e 'cd'))
a(='ab<>') => r insertNode +e => > /(a(='ab<>' e ''))
a('x' b < >) => r insertNode +e => > /(a('x' b < > e))
a('x<>y') => r insertNode +#(e 'f') => > /(a('x<>' e 'f' 'y')) + #
a('x<>y' b(c)) => r insertNode c => > /(a('x<>' c 'y' b))
a(#(< 'x' > b)) => r insertNode b => > /(a(#(< b > 'x')))
a(#(< b c > d)) => r insertNode b => DOM 8 ref child node not found
a(#(< b >)) => r insertNode +'t' => > /(a(#(< 't' > b)))
a(< 't' >) => r insertNode t => DOM 3 start container is not acceptable as child node
< > a => r insertNode a => DOM 3 start container is not acceptable as child node
a(b(< >)) => r insertNode b => DOM 3 start container is not acceptable as child node
a(b(< > c(d))) => r insertNode d => DOM 3 start container is not acceptable as child node
a(b(< > c)) => r insertNode a => DOM 3 child node is not acceptable
a(b('x<>y')) => r insertNode b => DOM 3 child node is not acceptable
a(!'x<>y' b) => r insertNode b => DOM 3 start container can't be split
a(?t'x<>y' b) => r insertNode b => DOM 3 start container can't be split
a(< >) => t: +'xy'; r setStart t 1; r insertNode a => DOM 3 start container has no parent
# What stands under an attribute of the start container is no ancestor of it.
a[x='1'](< b >) => e: a@x appendChild +&e; r insertNode e => > /(a[x='1'](< &e > b))
)");
}

TEST(Range, SurroundContents) {
    check(R"(
a('x<yz>w' c) => r surroundContents +e => > /(a('x' < e('yz') > 'w' c))
a('1<2' b '3>4') => r surroundContents +e => > /(a('1' < e('2' b '3') > '' '4'))
a('x<1' b('2') '3>y') => r surroundContents b => > /(a('x' < b('2' '1' b('2') '3') > '' 'y'))
# The start container goes as a whole, and its range with it.
a(b('1' < '2') c('3' > '4')) => r surroundContents +e => > /(a(c('4'))) + b('1' < e('2' b c('3')) >
  '2')
a('x' < b('y' >)) e => r surroundContents e => RANGE 1 surround range is partially selected
a(b('x<y') 'z>') e => r surroundContents e => RANGE 1 surround range is partially selected
a(b('x<y>z')) => r surroundContents b => DOM 3 child node is not acceptable
a(< 'x' >) => r surroundContents x => DOM 3 start container is not acceptable as child node
a(!'x<y>z' e) => r surroundContents e => DOM 3 start container can't be split
a(#(< 'x' b 'y' > c)) => r surroundContents b => > /(a(#(< b('x' b 'y') > c)))
a(#(< 'x' > b)) => r surroundContents b => DOM 8 ref child node not found
a(#(< n) y(b > c)) => r surroundContents n => DOM 8 ref child node not found
# Refused at the end.
%d(e) a(< b >) => d appendChild a; r surroundContents e => RANGE 2 invalid ancestor type
)");
}

TEST(Range, Life) {
    RangeScript script("a('x<y>')", "b");
    expect_steps(script, R"(
s getStartContainer => /  s getEndContainer => /  s getStartOffset => 0  s getEndOffset => 0
s getCollapsed => true  r getCollapsed => false  r getCommonAncestorContainer => 'xy'
s setEnd xy 1; s getCommonAncestorContainer => /  r compareBoundaryPoints -1 s => 0
r compareBoundaryPoints 4 s => 0
s setStart b 0; r compareBoundaryPoints 7 s => DOM 4 different root container
s detach; r compareBoundaryPoints 7 s => DOM 4 different root container
)");
    EXPECT_EQ(raised_by([&] { script.r->compareBoundaryPoints(7, nullptr); }),
              "DOM 4 different root container");
    Range* const clone = script.r->cloneRange();
    EXPECT_EQ(clone->getStartContainer(), script.node("xy"));
    EXPECT_EQ(clone->getStartOffset() + 10 * clone->getEndOffset(), 21);
    EXPECT_FALSE(clone->getCollapsed());
    for (Range* const used : {clone, static_cast<Range*>(nullptr)}) {
        script.tree.document->freeRange(used);
    }
    EXPECT_EQ(RangeScript("a(< >)").run("r detach; r getCommonAncestorContainer"), "null");
    for (const std::string& call :
         split("cloneContents;cloneRange;collapse true;compareBoundaryPoints 7 r;deleteContents;"
               "detach;extractContents;getStartContainer;getStartOffset;getEndContainer;"
               "getEndOffset;getCollapsed;insertNode null;selectNode null;selectNodeContents a;"
               "setEnd a 0;setEndAfter null;setEndBefore a;setStart null 9;setStartAfter a;"
               "setStartBefore a;surroundContents null;toString",
               ';')) {
        EXPECT_EQ(RangeScript("a(< >)").run("r detach; r " + call),
                  "DOM 11 range already detached");
    }
}

// START_TO_START, START_TO_END, END_TO_END and END_TO_START with a second range, s.
TEST(Range, Comparison) {
    for (const Row& row : cells_of(R"(
a('w<xy>z') => s setEnd wxyz 2; s setStart wxyz 1 => 0 1 1 -1
a('w<>z') => s setEnd wz 2; s setStart wz 0 => 1 1 -1 -1
a(b < c > d) => s selectNode c => 0 1 0 -1
a(b(c) < > d) => s setEnd c 0; s setStart b 1 => 1 1 1 1
a(b(<) 'x' > c) => s setEnd a 1; s setStart b 0 => 0 1 1 -1
a(b(<) >) => s selectNodeContents b => 0 1 1 0
a(b(c('<x')) d('y>')) => s setEnd d 1; s setStart b 1 => -1 1 -1 -1
a(< b('xy') >) => s setEnd xy 2; s setStart xy 2 => -1 1 1 -1
a(< > b) => s setEndAfter a => 1 1 -1 -1
a(b('<x') c('y>')) => s setEnd c 1; b: a removeChild b => DOM 4 different root container
a(b('<x') c('y>')) => s setEnd c 1; c: a removeChild c => 1 1 0 -1
a('wxy<z' b >) => s selectNode b; wxyz setNodeValue w => -1 1 0 -1
)",
                                   3)) {
        RangeScript script(row[0]);
        script.run(row[1]);
        std::string order;
        for (const std::string how : {"0", "1", "2", "3"}) {
            order += script.run("r compareBoundaryPoints " + how + " s") + ' ';
        }
        EXPECT_EQ(order, row[2][0] == 'D' ? times(4, row[2] + ' ') : row[2] + ' ') << row[0];
    }
}

// What a range detaches can be used until its document is freed.
TEST(Range, DetachedNodes) {
    RangeScript script("%d a(< b('x') c > e)");
    expect_steps(script, R"(
b: b; c: c; d: d; r deleteContents => > /(%d a(< > e)) + b('x') + c
e appendChild b => b('x') > /(%d a(< > e(b('x')))) + c  c free => > /(%d a(< > e(b('x'))))
r selectNode d; r deleteContents => > /(< > a(e(b('x')))) + %d
)");
}

TEST(Range, StalePoints) {
    check(R"(
# A start beyond its text raises, an end there is the end of the text.
a('wxy<z' b >) => wxyz setNodeValue w; r cloneRange => DOM 1 invalid offset
a('wxy<z' b >) => wxyz setNodeValue w; r cloneContents => DOM 1 invalid index
a('wxy<z' b >) => wxyz setNodeValue w; r extractContents => DOM 1 invalid index
a('wxy<z' b >) e => wxyz setNodeValue w; r insertNode e => DOM 1 invalid index
a(< b 'wxy>z') => wxyz setNodeValue w; r cloneRange => DOM 1 invalid offset
a(< b 'wxy>z') => wxyz setNodeValue w; r extractContents => #(b 'w') > /(a(< > ''))
a(< b 'wxy>z') e => wxyz setNodeValue w; r insertNode e => > /(a(< e b 'w>'))
# Children that are gone: the end of the container.
a(b c < e >) => a removeChild b; a removeChild e; r insertNode +f => > /(a(c f < >)) + b + e
# A start that has come behind the end: no content. Containers in different trees: refused.
a(b('<x') c('y>') d) => d appendChild b; r deleteContents => > /(a(c('y') d(b('<>x'))))
a(b('<x') c('y>')) => a removeChild b; r getCommonAncestorContainer => null
a(b('<x') c('y>')) => a removeChild b; r deleteContents => DOM 9 TreeWalker root is null
# The offset is looked at before the parent is.
a(e < >) => t: +'xy'; r setStart t 2; t setNodeValue x; r insertNode e => DOM 1 invalid index
a(e < >) => t: +'xy'; r setStart t 2; t setNodeValue x; r surroundContents e => DOM 1 invalid index
# A refused insertion has left the first child of the fragment without parent.
a(g < >) => f: +#(b c); r setStart f 0; r setEnd f 1; a insertBefore f a; r toString => '<b>'
a(g < >) => f: +#(b c); r setStart f 0; r setEnd f 1; a insertBefore f a; r deleteContents => >
  /(a(g)) + #(< > c)
)");
}

}  // namespace
}  // namespace qvox_test
