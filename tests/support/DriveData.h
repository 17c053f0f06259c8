#pragma once

#include "platform/AtaSmart.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <numeric>
#include <string_view>
#include <vector>

namespace calorivo::test {

/// Makes the sum of all bytes 0.
inline void sealBlock(AtaBlock& data) {
    data[ataBlockSize - 1] = 0;
    data[ataBlockSize - 1] = static_cast<std::uint8_t>(-std::accumulate(data.begin(), data.end(), 0));
}

/// A text as drives store it: from this word on, its characters swapped in each word, filled up with blanks.
inline void putText(AtaBlock& data, std::size_t word, std::size_t length, std::string_view text) {
    for (std::size_t i = 0; i < length; ++i)
        data[word * 2 + (i ^ 1U)] = static_cast<std::uint8_t>(i < text.size() ? text[i] : ' ');
}

/// The identify data of a drive with SMART, which is switched on.
inline AtaBlock identifyData(std::string_view model, std::string_view serial) {
    AtaBlock data{};
    putText(data, 10, 20, serial);
    putText(data, 27, 40, model);
    data[164] = 0x01;
    data[170] = 0x01;
    data[510] = 0xA5;
    sealBlock(data);
    return data;
}

/// One entry of the table of attributes.
struct Attribute {
    std::uint8_t identifier = 0;
    std::vector<std::uint8_t> rawValue;
    std::uint8_t value = 100;
};

inline AtaBlock smartData(std::initializer_list<Attribute> attributes) {
    AtaBlock data{};
    data[0] = 0x10;
    std::size_t begin = 2;
    for (const Attribute& attribute : attributes) {
        data[begin] = attribute.identifier;
        data[begin + 3] = attribute.value;
        for (std::size_t i = 0; i < attribute.rawValue.size(); ++i)
            data[begin + 5 + i] = attribute.rawValue[i];
        begin += 12;
    }
    sealBlock(data);
    return data;
}

}  // namespace calorivo::test
