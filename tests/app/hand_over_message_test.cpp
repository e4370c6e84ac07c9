#include "app/hand_over_message.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using State = HandOverReading::State;

const HandOverMessage kMessage{{"/a b/\xC3\xA9\n.vantor", "/\xFF\xFE", "/a"}, Timestamp{780000000.123456}};

TEST(HandOverMessage, KeepsEveryByteOfItsFiles) {
    const auto reading = readHandOver(writeHandOver(kMessage).value());
    ASSERT_EQ(reading.state, State::Complete);
    EXPECT_EQ(reading.message.files, kMessage.files);
    ASSERT_TRUE(reading.message.handedBeforeAt);
    EXPECT_EQ(reading.message.handedBeforeAt->secondsSinceReference, 780000000.123456);
    const auto none = readHandOver(writeHandOver({}).value());
    EXPECT_EQ(none.state, State::Complete);
    EXPECT_THAT(none.message.files, ::testing::ElementsAre());
    EXPECT_FALSE(none.message.handedBeforeAt);
}

TEST(HandOverMessage, IsIncompleteUpToItsLastByte) {
    const auto bytes = writeHandOver(kMessage).value();
    for (std::size_t length = 0; length < bytes.size(); ++length)
        EXPECT_EQ(readHandOver(std::string_view(bytes).substr(0, length)).state, State::Incomplete) << length;
    EXPECT_EQ(readHandOver(bytes + "g").state, State::Malformed);
}

TEST(HandOverMessage, HasAGreatestLength) {
    HandOverMessage message;
    message.files.emplace_back("/" + std::string(HandOverMessage::kMostBytes, 'a'));
    EXPECT_FALSE(writeHandOver(message));
    const std::string head = "VANTOR1\n";
    EXPECT_EQ(readHandOver(head + "\xFF\xFF\xFF\xFF").state, State::Malformed);
    EXPECT_EQ(readHandOver(head + std::string("\x01\x00\x00\x00", 4)).state, State::Malformed);
    EXPECT_EQ(readHandOver(head + std::string("\x00\xFF\xFF\x00", 4)).state, State::Incomplete);
}

TEST(HandOverMessage, RefusesWhatIsNone) {
    using namespace std::string_literals;
    for (const auto& bytes : {"x"s, "GET / HTTP/1.1\r\n\r\n"s, "VANTOR2\n\0\0\0\1\0"s, "VANTOR1\n\0\0\0\0"s,
                              "VANTOR1\n\0\0\0\1x"s, "VANTOR1\n\0\0\0\3\0/a"s, "VANTOR1\n\0\0\0\3\0a\0"s,
                              "VANTOR1\n\0\0\0\2\0\0"s, "VANTOR1\n\0\0\0\2x\0"s,
                              "VANTOR1\n\0\0\0\3"
                              "1x\0"s})
        EXPECT_EQ(readHandOver(bytes).state, State::Malformed) << bytes;
}

} // namespace
} // namespace vantor
