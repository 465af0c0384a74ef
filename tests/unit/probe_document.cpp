#include "probe/probe_document.h"

#include "cases.h"

namespace
{

const string DIGEST_OF_ABC = "900150983cd24fb0d6963f7d28e17f72";

string digest_in(const string& output)
{
    char digest[DIGEST_FIELD_SIZE] = "";
    take_digest(reader_of(output), digest);
    return digest;
}

const Case OUTPUTS[] = {
    {"of_md5sum", times(32, "1") + "  -\n", times(32, "1")},
    {"of_31_characters", times(31, "1"), ""},
    {"takes_the_last_long_line", times(32, "1") + "\n" + times(32, "2") + "\nx\n", times(32, "2")},
    {"cuts_lines_at_511_characters", times(511, "1") + times(32, "2"), times(32, "2")},
    {"keeps_lines_of_511_characters", times(511, "1") + times(31, "2"), times(32, "1")},
};

CASES(DigestOutput, digest_in, OUTPUTS);

string document(const string& date, const string& checksum)
{
    return "HTTP/1.0 404\r\n\r\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<tolvane date=\"" +
           date + "\">\n\t<checksum>" + checksum + "</checksum>\n</tolvane>";
}

// A good document with one change.
string with(const string& replacement, const string& part)
{
    string changed = document("abc", DIGEST_OF_ABC);
    return changed.replace(changed.find(part), part.size(), replacement);
}

string verdict(const string& chunk)
{
    return verify_probe_chunk(chunk.c_str()) ? "good" : "bad";
}

const Case CHUNKS[] = {
    {"good", document("abc", DIGEST_OF_ABC), "good"},
    {"checksum_in_upper_case", document("abc", "900150983CD24FB0D6963F7D28E17F72"), "good"},
    {"another_checksum", document("abc", "900150983cd24fb0d6963f7d28e17f73"), "bad"},
    {"checksum_of_31_characters", document("abc", DIGEST_OF_ABC.substr(0, 31)), "bad"},
    {"checksum_of_33_characters", document("abc", DIGEST_OF_ABC + "0"), "bad"},
    {"checksum_without_end", with("", "</checksum>\n</tolvane>"), "good"},
    {"empty_checksum", document("abc", ""), "bad"},
    {"empty_date", document("", "d41d8cd98f00b204e9800998ecf8427e"), "bad"},
    {"date_of_20_characters", document("01234567890123456789", "be497c2168e374f414a351c49379c01a"), "good"},
    {"longer_date_is_cut", document("01234567890123456789+", "be497c2168e374f414a351c49379c01a"), "good"},
    {"no_tabulator_before_the_checksum", with(" <", "\t<"), "bad"},
    {"other_attribute_after_the_date", with("abc\" a=\"b\"", "abc\""), "bad"},
    {"other_declaration", with("utf-8", "UTF-8"), "bad"},
    {"zero_byte_before_the_checksum", with("\0<"s, "\t<"), "bad"},
    {"first_date_counts", with("<tolvane date=\"x\">", "HTTP"), "bad"},
    {"first_checksum_counts", with("\t<checksum>x</checksum>", "HTTP"), "bad"},
};

CASES(ProbeChunk, verdict, CHUNKS);

} // namespace
