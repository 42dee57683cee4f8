#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// The hash of a commit that a test calls by a number. It shares its short hash with those whose numbers differ by 1000.
inline std::string hashOf(int number)
{
    char digits[41];
    std::snprintf(digits, sizeof digits, "%07x%033x", number % 1000, number);
    return digits;
}

/// A record of git's log command, and what separates it from the next one. Each number has a second of its own, or shares
/// that of the number `second`.
inline std::string logRecord(int number, const std::vector<int>& parents, const std::string& subject = "s",
                             const std::string& author = "Ada", const std::string& email = "ada@example.org", int second = 0)
{
    std::string record = hashOf(number) + '\0';
    for (const int parent : parents)
        record += (record.back() == '\0' ? "" : " ") + hashOf(parent);
    return record + '\0' + std::to_string(1700000000 - (second != 0 ? second : number)) + '\0' + email + '\0' + author + '\0'
           + subject + "\x01\n";
}
