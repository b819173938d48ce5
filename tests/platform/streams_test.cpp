// What can be opened, and reads that fail.
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>

#include <gtest/gtest.h>

#include "platform/byte_sink.h"
#include "platform/byte_stream.h"
#include "support/recorder.h"
#include "support/system.h"

namespace qvox {
namespace {

namespace os = qvox_test::os;

// The first byte, or the error of opening.
int first_byte(const std::unique_ptr<ByteStream>& stream) {
    return stream == nullptr ? -errno : stream->get();
}

struct Opened {
    const char* name;
    int any;
    int regular;
};

void expect_opened(const Opened& expected) {
    const auto& [name, any, regular] = expected;
    EXPECT_EQ(first_byte(ByteStream::open(name)), any) << name;
    EXPECT_EQ(first_byte(ByteStream::openRegular(name)), regular) << name;
}

TEST(Streams, WhatCanBeOpened) {
    qvox_test::write_file("file", "x");
    for (const Opened& expected : {Opened{"file", 'x', 'x'},
                                   {os::NULL_DEVICE, ByteStream::END, -EINVAL},
                                   {".", -EISDIR, -EISDIR},
                                   {"nothing", -ENOENT, -ENOENT},
                                   {"", -ENOENT, -ENOENT},
                                   {nullptr, -ENOENT, -ENOENT}}) {
        expect_opened(expected);
    }
}

// Shift_JIS, in which the second byte of a character may be a backslash.
TEST(Streams, NamesOfFiles) {
    namespace fs = std::filesystem;
    const char* const narrow = "\x95\x5C\xB6.xml";
    ASSERT_TRUE(ByteSink::open(narrow)->write("x", 1));
    EXPECT_TRUE(fs::exists(os::HAS_WIDE_NAMES ? fs::u8path("\u8868\uFF76.xml") : fs::path(narrow)));
    EXPECT_EQ(first_byte(ByteStream::open(narrow)), 'x');
    EXPECT_EQ(first_byte(ByteStream::openRegular(narrow)), 'x');
}

TEST(Streams, PipesAndLinks) {
    if (!os::HAS_PIPES) GTEST_SKIP() << "no pipes with names";
    qvox_test::write_file("linked", "x");
    std::filesystem::create_symlink("linked", "link");
    expect_opened({"link", 'x', 'x'});
    ASSERT_TRUE(os::make_pipe("pipe"));
    EXPECT_EQ(first_byte(ByteStream::openRegular("pipe")), -EINVAL);  // nobody will ever write
    std::FILE* const pipe = std::fopen("pipe", "r+b");                // waits for no other end
    std::fputc('p', pipe);
    std::fflush(pipe);
    const auto stream = ByteStream::open("pipe");
    EXPECT_EQ(first_byte(ByteStream::openRegular("pipe")), -EINVAL);
    std::fclose(pipe);
    EXPECT_EQ(first_byte(stream), 'p');
}

TEST(Streams, FailedReadIsNoEndOfFile) {
    qvox_test::write_file("long", std::string(100000, 'x'));
    std::FILE* const unreadable = std::fopen("written", "wb");
    for (const bool fails : {false, true}) {
        const int descriptor = os::next_descriptor();
        const auto stream = ByteStream::openRegular("long");
        ASSERT_EQ(stream->get(), 'x');
        std::optional<os::Diversion> diversion;
        if (fails) diversion.emplace(descriptor, unreadable);
        while (stream->get() != ByteStream::END) continue;
        EXPECT_EQ(stream->failed(), fails);
        EXPECT_EQ(stream->position() < 100000, fails);
        errno = 0;
        EXPECT_EQ(stream->get(), ByteStream::END);
        EXPECT_EQ(errno, fails ? EBADF : 0);
    }
    std::fclose(unreadable);
}

}  // namespace
}  // namespace qvox
