#include "model/Uuid.h"

#include <cstdint>
#include <random>

namespace tintwork {

std::string newUUID() {
    // One generator per thread, seeded once from the system's entropy source.
    thread_local std::mt19937_64 generator = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    std::uint64_t high = generator();
    std::uint64_t low = generator();
    high = (high & 0xFFFFFFFFFFFF0FFFULL) | 0x0000000000004000ULL;  // version 4
    low = (low & 0x3FFFFFFFFFFFFFFFULL) | 0x8000000000000000ULL;    // RFC 4122 variant

    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    auto append = [&](std::uint64_t value, int firstNibble, int count) {
        for (int i = 0; i < count; ++i) {
            const int shift = 60 - 4 * (firstNibble + i);
            text.push_back(digits[(value >> shift) & 0xF]);
        }
    };
    append(high, 0, 8);
    text.push_back('-');
    append(high, 8, 4);
    text.push_back('-');
    append(high, 12, 4);
    text.push_back('-');
    append(low, 0, 4);
    text.push_back('-');
    append(low, 4, 12);
    return text;
}

}  // namespace tintwork
