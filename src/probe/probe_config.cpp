#include "probe/probe_config.h"

#include <sys/stat.h>

#include <cstring>

#include "platform/text_field.h"

namespace
{

constexpr char CONFIG_FILE_PATH[] = "/etc/tolvane.cfg";

// Replaces `value`, a field for the rest of a line, if the line has one for the key.
void take_value(const char* line, const char* key, char* value)
{
    const std::size_t key_length = std::strlen(key);
    if (std::strncmp(line, key, key_length) != 0)
        return;
    const char* text = line + key_length;
    copy_text(text, std::strcspn(text, "\r\x0F"), value, CONFIG_LINE_SIZE - key_length);
}

} // namespace

ProbeConfig parse_probe_config(TextReader& reader)
{
    ProbeConfig config;
    config.checkserver[0] = '\0';
    config.xmluri[0] = '\0';
    char line[CONFIG_LINE_SIZE];
    while ((config.checkserver[0] == '\0' || config.xmluri[0] == '\0') && read_piece(reader, line)) {
        take_value(line, "checkserver=", config.checkserver);
        take_value(line, "xmluri=", config.xmluri);
    }
    return config;
}

ProbeConfig read_probe_config()
{
    TextReader reader;
    if (!open_regular_file(CONFIG_FILE_PATH, reader))
        return {};
    const ProbeConfig config = parse_probe_config(reader);
    close_text_file(reader);
    return config;
}

bool probe_config_present()
{
    struct stat status;
    return stat(CONFIG_FILE_PATH, &status) == 0;
}
