// Unicode date patterns for the now tag: runs of a pattern letter select a field,
// text in single quotes is literal and '' is one quote.

#include <ctime>

#include "Nodes.h"

namespace tintwork::stencil {

namespace {

const char* const monthNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                  "July",    "August",   "September", "October", "November", "December"};
const char* const dayNames[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

std::string padded(long value, std::size_t width) {
    std::string digits = std::to_string(value);
    if (digits.size() < width) {
        digits.insert(0, width - digits.size(), '0');
    }
    return digits;
}

std::string field(char letter, std::size_t count, const std::tm& time) {
    switch (letter) {
    case 'y': {
        long year = time.tm_year + 1900L;
        return count == 2 ? padded(year % 100, 2) : padded(year, count);
    }
    case 'M':
    case 'L':
        if (count >= 4) {
            return monthNames[time.tm_mon];
        }
        if (count == 3) {
            return std::string(monthNames[time.tm_mon]).substr(0, 3);
        }
        return padded(time.tm_mon + 1, count);
    case 'd':
        return padded(time.tm_mday, count);
    case 'D':
        return padded(time.tm_yday + 1, count);
    case 'E':
        return count >= 4 ? std::string(dayNames[time.tm_wday]) : std::string(dayNames[time.tm_wday]).substr(0, 3);
    case 'H':
        return padded(time.tm_hour, count);
    case 'h':
        return padded(time.tm_hour % 12 == 0 ? 12 : time.tm_hour % 12, count);
    case 'K':
        return padded(time.tm_hour % 12, count);
    case 'k':
        return padded(time.tm_hour == 0 ? 24 : time.tm_hour, count);
    case 'm':
        return padded(time.tm_min, count);
    case 's':
        return padded(time.tm_sec, count);
    case 'a':
        return time.tm_hour < 12 ? "AM" : "PM";
    default:
        return std::string(count, letter);
    }
}

}  // namespace

std::string formatCurrentDate(const std::string& pattern) {
    std::time_t now = std::time(nullptr);
    std::tm time{};
    localtime_r(&now, &time);
    std::string output;
    std::size_t index = 0;
    while (index < pattern.size()) {
        char character = pattern[index];
        if (character == '\'') {
            if (index + 1 < pattern.size() && pattern[index + 1] == '\'') {
                output += '\'';
                index += 2;
                continue;
            }
            std::size_t end = index + 1;
            while (end < pattern.size()) {
                if (pattern[end] == '\'') {
                    if (end + 1 < pattern.size() && pattern[end + 1] == '\'') {
                        output += '\'';
                        end += 2;
                        continue;
                    }
                    break;
                }
                output += pattern[end++];
            }
            index = end + 1;
            continue;
        }
        bool letter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
        if (!letter) {
            output += character;
            ++index;
            continue;
        }
        std::size_t count = 1;
        while (index + count < pattern.size() && pattern[index + count] == character) {
            ++count;
        }
        // Long runs of a letter add nothing but padding; keep them bounded.
        output += field(character, std::min<std::size_t>(count, 32), time);
        index += count;
    }
    return output;
}

}  // namespace tintwork::stencil
