// What the input tells of when a level begins or ends. Whoever makes the input gives it one of
// these, so that it knows nothing of the scanner or the parsers.
#pragma once

#include "text/wide.h"

namespace qvox {

class LevelEvents {
public:
    // A level with a name begins or has ended: an entity, or the external subset under the name
    // "[dtd]".
    virtual void ev_start_entity(const Unit* name) = 0;
    virtual void ev_end_entity(const Unit* name) = 0;

    // The external subset begins or has ended: the lexer takes its state and a pending token from
    // that.
    virtual void subset_level_started() = 0;
    virtual void subset_level_ended() = 0;

protected:
    ~LevelEvents() = default;
};

}  // namespace qvox
