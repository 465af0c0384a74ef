#include "platform/text_field.h"

#include "cases.h"

TEST(CopyText, CutsWhatDoesNotFit)
{
    char field[4];
    copy_text("abcd", 4, field);
    EXPECT_STREQ(field, "abc");
}
