// The process's one turn to parse: by default parses run one after the other.
#pragma once

namespace qvox {

class ParseTurn {
public:
    // Waits for the turn. A thread that has it already, in a parse whose handler starts another,
    // is refused with an error. With `isConcurrent` there is no turn to wait for.
    explicit ParseTurn(bool isConcurrent);
    ParseTurn(const ParseTurn&) = delete;
    ParseTurn& operator=(const ParseTurn&) = delete;
    ~ParseTurn() { end(); }

    // Gives the turn back.
    void end();

private:
    bool isHeld;
};

// Raises the error of a parse that a handler of a running one starts.
void refuse_nested_parse();

}  // namespace qvox
