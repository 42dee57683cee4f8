#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

/// The pieces of a concatenation, joined with one allocation when the result is taken:
/// `cmStringT line = cmCat(quote) + path + quote;`
/// It holds views: take the result before the expression ends, never keep the helper.
class cmStringCatHelperT {
public:
    explicit cmStringCatHelperT(cmROStringT first) { m_pieces.push_back(first); }

    cmStringCatHelperT&& operator+(cmROStringT piece) &&
    {
        m_pieces.push_back(piece);
        return std::move(*this);
    }

    operator cmStringT() const
    {
        std::size_t length = 0;
        for (cmROStringT piece : m_pieces)
            length += piece.size();
        cmStringT joined;
        joined.reserve(length);
        for (cmROStringT piece : m_pieces)
            joined.append(piece);
        return joined;
    }

private:
    cmArray<cmROStringT> m_pieces;
};

/// Begins a concatenation.
inline cmStringCatHelperT cmCat(cmROStringT first)
{
    return cmStringCatHelperT(first);
}
