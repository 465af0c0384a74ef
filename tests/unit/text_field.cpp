#include "platform/text_field.h"

#include "cases.h"

namespace
{

string copied(const string& text)
{
    char field[4];
    copy_text(text.c_str(), text.size(), field);
    return field;
}

const Case TEXTS[] = {
    {"fills_the_field", "abc", "abc"},
    {"is_cut", "abcd", "abc"},
    {"stays_terminated_at_any_length", times(99, "a"), "aaa"},
};

CASES(CopiedText, copied, TEXTS);

TEST(CopyText, EndsAtTheGivenLength)
{
    char field[] = "1234";
    copy_text("abc", 2, field);
    EXPECT_STREQ(field, "ab");
}

} // namespace
