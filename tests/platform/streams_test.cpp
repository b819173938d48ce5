// What can be opened, and reads that fail.
#include <cerrno>
#include <cstdio>
#include <filesystem>

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

// With any file, and with a regular one alone.
void expect_opened(const char* name, int any, int regular) {
    EXPECT_EQ(first_byte(ByteStream::open(name)), any) << name;
    EXPECT_EQ(first_byte(ByteStream::openRegular(name)), regular) << name;
}

TEST(Streams, WhatCanBeOpened) {
    qvox_test::write_file("file", "x");
    expect_opened("file", 'x', 'x');
    expect_opened(os::NULL_DEVICE, ByteStream::END, -EINVAL);
    expect_opened(".", -EISDIR, -EISDIR);
    for (const char* const none : {"nothing", "", static_cast<const char*>(nullptr)}) {
        expect_opened(none, -ENOENT, -ENOENT);
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
    expect_opened("link", 'x', 'x');
    ASSERT_TRUE(os::make_pipe("pipe"));
    EXPECT_EQ(first_byte(ByteStream::openRegular("pipe")), -EINVAL);  // nobody will ever write
    std::FILE* const pipe = std::fopen("pipe", "r+b");                // waits for no other end
    std::fputc('p', pipe);
    std::fflush(pipe);
    const auto stream = ByteStream::open("pipe");
    std::fclose(pipe);
    EXPECT_EQ(first_byte(stream), 'p');
}

TEST(Streams, FailedReadIsNoEndOfFile) {
    qvox_test::write_file("long", std::string(100000, 'x'));
    std::FILE* const unreadable = std::fopen("written", "wb");
    const int descriptor = os::next_descriptor();
    const auto stream = ByteStream::openRegular("long");
    ASSERT_EQ(stream->get(), 'x');
    {
        const os::Diversion diversion(descriptor, unreadable);
        while (stream->get() != ByteStream::END) continue;
        EXPECT_TRUE(stream->failed() && stream->position() < 100000);
        EXPECT_EQ(first_byte(stream) + errno, ByteStream::END + EBADF);
    }
    std::fclose(unreadable);
}

}  // namespace
}  // namespace qvox
