// The lexer's stack of states. A frame is a run of entries: the frame below, the main state, and
// one or more sub-states, the first of them SUB_START. An open element holds one frame. The depth
// has no limit of its own.
#pragma once

namespace qvox {

enum MainState : int {
    LEX_DOCUMENT = 1,       // outside the root element
    LEX_COMMENT = 2,        // a comment's text
    LEX_XML_DECL = 3,       // inside an XML or text declaration
    LEX_PI = 4,             // a processing instruction
    LEX_START_TAG = 5,      // inside a start tag
    LEX_CONTENT = 6,        // content of an element
    LEX_END_TAG = 7,        // inside an end tag
    LEX_CDATA = 8,          // a CDATA section's text
    LEX_COND_SECTION = 9,   // header or ignored text of a conditional section
    LEX_INCLUDE_BODY = 10,  // inside an included section
    LEX_DOCTYPE = 11,       // document type declaration, internal and external subset
    LEX_ELEMENT_DECL = 12,  // element declaration
    LEX_ATTLIST_DECL = 13,  // attribute-list declaration
    LEX_ENTITY_DECL = 14,   // entity declaration
    LEX_NOTATION_DECL = 15  // notation declaration
};

enum SubState : int {
    NO_SUB_STATE = 0,           // in tables: nothing follows
    SUB_START = 16,             // nothing particular has been seen yet
    SUB_VERSION_VALUE = 17,     // behind the word version
    SUB_ENCODING_VALUE = 18,    // behind the word encoding
    SUB_STANDALONE_VALUE = 19,  // behind the word standalone
    SUB_PI_DATA = 20,           // behind the target of a processing instruction
    SUB_INCLUDE_OPEN = 21,      // behind the word INCLUDE
    SUB_IGNORE_OPEN = 22,       // behind the word IGNORE
    SUB_IGNORE_BODY = 23,       // the text of an ignored section
    SUB_DOCTYPE_EXTERNAL = 24,  // behind the name of the document type
    SUB_DOCTYPE_SYSTEM = 26,    // a system literal is due
    SUB_DOCTYPE_PUBLIC = 27,    // a public literal is due
    SUB_DTD_BODY = 28,          // between the declarations of a subset
    SUB_ELEMENT_BODY = 29,      // behind the name in an element declaration
    SUB_ATTLIST_BODY = 30,      // behind the name in an attribute-list declaration
    SUB_ATT_NOTATION = 31,      // behind the word NOTATION of an attribute type
    SUB_ATT_ENUM = 32,          // inside an enumeration
    SUB_ENTITY_BODY = 33,       // behind the name in an entity declaration
    SUB_ENTITY_SYSTEM = 34,     // a system literal is due
    SUB_ENTITY_PUBLIC = 35,     // a public literal is due
    SUB_ENTITY_NDATA = 36,      // behind the word NDATA
    SUB_NOTATION_BODY = 37,     // behind the name in a notation declaration
    SUB_NOTATION_SYSTEM = 38,   // a system literal may come, or the end
    SUB_NOTATION_PUBLIC = 39    // a public literal is due
};

class StateStack {
public:
    StateStack();
    StateStack(const StateStack&) = delete;
    StateStack& operator=(const StateStack&) = delete;
    ~StateStack();

    void push_frame(MainState main) {
        if (stateCap - stateTop < FRAME_SIZE) grow();
        stateStack[stateTop] = stateFrame;
        stateStack[stateTop + 1] = main;
        stateStack[stateTop + 2] = SUB_START;
        stateFrame = stateTop + 1;
        stateTop += FRAME_SIZE;
    }
    void pop_frame() {
        stateTop = stateFrame - 1;
        stateFrame = stateStack[stateTop];
    }
    void push_sub(SubState sub) {
        if (stateTop == stateCap) grow();
        stateStack[stateTop++] = sub;
    }
    void pop_sub() { --stateTop; }
    void set_sub(SubState sub) { stateStack[stateTop - 1] = sub; }

    int main_state() const { return stateStack[stateFrame]; }
    int sub_state() const { return stateStack[stateTop - 1]; }

    // Entries in use.
    int height() const { return stateTop; }

private:
    static constexpr int FRAME_SIZE = 3;  // a new frame's entries

    void grow();

    int* stateStack;  // entries of frames
    int stateTop;     // entries in use
    int stateFrame;   // index of the current frame's main state
    int stateCap;     // entries that fit
};

}  // namespace qvox
