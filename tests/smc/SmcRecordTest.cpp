#include "smc/SmcRecord.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <new>

namespace calorivo {
namespace {

using RecordBytes = std::array<std::uint8_t, 80>;

TEST(SmcRecord, LaysEveryFieldWhereTheServiceExpectsIt) {
    static_assert(std::endian::native == std::endian::little);
    SMCKeyData record{};
    record.key = 0x01020304;
    record.vers = {0x05, 0x06, 0x07, 0x08, 0x090a};
    record.pLimitData = {0x0b0c, 0x0d0e, 0x0f101112, 0x13141516, 0x1718191a};
    record.keyInfo.dataSize = 0x1b1c1d1e;
    record.keyInfo.dataType = 0x1f202122;
    record.keyInfo.dataAttributes = 0x23;
    record.result = 0x24;
    record.status = 0x25;
    record.data8 = 0x26;
    record.data32 = 0x2728292a;
    for (std::uint8_t i = 0; i < 32; ++i) record.bytes[i] = static_cast<std::uint8_t>(0xa0 + i);

    const RecordBytes expected{0x04, 0x03, 0x02, 0x01,                          // key
                               0x05, 0x06, 0x07, 0x08, 0x0a, 0x09, 0x00, 0x00,  // vers
                               0x0c, 0x0b, 0x0e, 0x0d, 0x12, 0x11, 0x10, 0x0f,  // pLimitData
                               0x16, 0x15, 0x14, 0x13, 0x1a, 0x19, 0x18, 0x17,  //
                               0x1e, 0x1d, 0x1c, 0x1b, 0x22, 0x21, 0x20, 0x1f,  // keyInfo
                               0x23, 0x00, 0x00, 0x00,                          //
                               0x24, 0x25, 0x26, 0x00,                          // result, status, data8
                               0x2a, 0x29, 0x28, 0x27,                          // data32
                               0xa0, 0xa1, 0xa2, 0xa3, 0xa4, 0xa5, 0xa6, 0xa7, 0xa8, 0xa9, 0xaa,
                               0xab, 0xac, 0xad, 0xae, 0xaf, 0xb0, 0xb1, 0xb2, 0xb3, 0xb4, 0xb5,
                               0xb6, 0xb7, 0xb8, 0xb9, 0xba, 0xbb, 0xbc, 0xbd, 0xbe, 0xbf};
    EXPECT_EQ(std::bit_cast<RecordBytes>(record), expected);
}

TEST(SmcRecord, IsClearedInEveryByteGapsIncluded) {
    alignas(SMCKeyData) RecordBytes memory{};
    memory.fill(0xff);
    new (memory.data()) SMCKeyData{};
    EXPECT_EQ(memory, RecordBytes{});
}

}  // namespace
}  // namespace calorivo
