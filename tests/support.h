// What the unit tests and the fuzzers are built on: text as the program takes it, addresses and commands as text.
#pragma once

#include <arpa/inet.h>

#include <cstdio>
#include <string>

#include "address_family.h"
#include "platform/text_file.h"

inline constexpr AddressFamily IPV4 = AddressFamily::IPV4;
inline constexpr AddressFamily IPV6 = AddressFamily::IPV6;

// The one reader, now holding this text and nothing behind it; what exceeds its buffer is cut off.
inline TextReader& reader_of(const std::string& text)
{
    static TextReader reader;
    start_reading(reader, -1);
    reader.end = text.copy(reader.buffer, sizeof reader.buffer);
    return reader;
}

inline std::string address_text(AddressFamily family, const void* address)
{
    char text[INET6_ADDRSTRLEN];
    return inet_ntop(socket_family(family), address, text, sizeof text);
}

inline std::string shell_output(const std::string& command)
{
    std::FILE* stream = popen(command.c_str(), "r");
    std::string output;
    char buffer[4096];
    while (std::feof(stream) == 0) // libFuzzer's timer may interrupt a read
        output.append(buffer, std::fread(buffer, 1, sizeof buffer, stream));
    pclose(stream);
    return output;
}
