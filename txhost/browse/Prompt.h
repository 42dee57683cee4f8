#pragma once

#include "common/cmArray.h"
#include "txhost/browse/Key.h"
#include "txhost/browse/StyledLine.h"

enum class PromptKind { search, filter, jump };

/// A line in which the user types. At its right it shows what is offered to complete it.
class Prompt {
public:
    /// What a key has done.
    enum class Outcome { nothing, changed, accepted, cancelled };

    explicit Prompt(PromptKind kind, cmStringT text = "");

    Outcome press(const Key& key);
    PromptKind kind() const { return m_kind; }
    const cmStringT& text() const { return m_text; }
    /// What Tab puts in the text's place, one after the other.
    void offer(cmArray<cmStringT> choices);

    /// Returns the column of the terminal's cursor. `remark` is shown behind the text.
    std::size_t draw(StyledLine& line, cmROStringT remark) const;

private:
    Outcome type(char32_t code);
    Outcome erase(std::size_t bytes);
    void choose(bool forwards);

    PromptKind m_kind;
    cmStringT m_text;
    cmArray<cmStringT> m_choices;
    std::size_t m_chosen = 0;  ///< how many times Tab was pressed, in a round of as many as there are choices
};
