#include "txhost/browse/Key.h"

#include <gtest/gtest.h>

namespace {

TEST(Keys, AreReadFromTheirNames)
{
    const cmArray<Key> wanted{{KeyKind::character, U'j'},  {KeyKind::character, U'é'}, {KeyKind::character, U'<'},
                              {KeyKind::character, 3},     {KeyKind::enter},           {KeyKind::tab},
                              {KeyKind::escape},           {KeyKind::backspace},       {KeyKind::pageUp},
                              {KeyKind::click, 0, 12, 34}, {KeyKind::wheelDown, 0, 0}, {KeyKind::character, U'>'}};
    EXPECT_EQ(keysFromText("jé<lt><C-c><Enter>\t<Esc><Backspace><PageUp><Click:12,34><WheelDown:0,0>>"), wanted);
    for (const char* wrong : {"j<", "<lt", "<>", "<enter>", "<C-1>", "<Click:1>", "<Click:1,2x>", "<Click:-1,2>", "\xE9"})
        EXPECT_FALSE(keysFromText(wrong)) << wrong;
}

}  // namespace
