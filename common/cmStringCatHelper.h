#pragma once

#include "common/cmArray.h"
#include "common/cmString.h"

/// A concatenation, joined with one allocation when it is converted to a cmStringT:
/// `cmStringT line = cmCat(quote) + path + quote;`
/// It holds views: convert it within the same expression and never store it.
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

/// Starts a concatenation.
inline cmStringCatHelperT cmCat(cmROStringT first)
{
    return cmStringCatHelperT(first);
}
