// What can be opened, reads that fail, and memory that runs out in between.
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/byte_sink.h"
#include "platform/byte_stream.h"
#include "support/recorder.h"

namespace {
bool memoryIsOut = false;
}  // namespace

void* operator new(std::size_t size) {
    void* const p = memoryIsOut ? nullptr : std::malloc(size);
    if (p == nullptr) throw std::bad_alloc();
    return p;
}
void operator delete(void* p) noexcept { std::free(p); }
#if defined(__cpp_sized_deallocation)
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
#endif

namespace qvox {
namespace {

// The first byte, or the error of opening.
int first_byte(const std::unique_ptr<ByteStream>& stream) {
    return stream == nullptr ? -errno : stream->get();
}

// The descriptor that the next file gets.
int next_descriptor() {
    const int descriptor = dup(0);
    close(descriptor);
    return descriptor;
}

TEST(Streams, WhatCanBeOpened) {
    qvox_test::write_file("file", "x");
    std::filesystem::create_symlink("file", "link");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const struct {
        const char* name;
        int any;
        int regular;
    } cases[] = {
        {"file", 'x', 'x'},        {"link", 'x', 'x'},
        {"/dev/zero", 0, -EINVAL}, {"/dev/null", ByteStream::END, -EINVAL},
        {".", -EISDIR, -EISDIR},   {"nothing", -ENOENT, -ENOENT},
        {"", -ENOENT, -ENOENT},    {nullptr, -ENOENT, -ENOENT},
    };
    for (const auto& [name, any, regular] : cases) {
        EXPECT_EQ(first_byte(ByteStream::open(name)), any) << name;
        EXPECT_EQ(first_byte(ByteStream::openRegular(name)), regular) << name;
    }
    EXPECT_EQ(first_byte(ByteStream::openRegular("pipe")), -EINVAL);  // nobody will ever write
    const int pipe = open("pipe", O_RDWR);                            // waits for no other end
    ASSERT_EQ(write(pipe, "p", 1), 1);
    const auto stream = ByteStream::open("pipe");
    EXPECT_EQ(first_byte(ByteStream::openRegular("pipe")), -EINVAL);
    close(pipe);
    EXPECT_EQ(first_byte(stream), 'p');
}

TEST(Streams, FailedReadIsNoEndOfFile) {
    qvox_test::write_file("long", std::string(100000, 'x'));
    for (const bool fails : {false, true}) {
        const int descriptor = next_descriptor();
        const auto stream = ByteStream::openRegular("long");
        ASSERT_EQ(stream->get(), 'x');
        const int directory = open(".", O_RDONLY);
        if (fails) dup2(directory, descriptor);
        close(directory);
        while (stream->get() != ByteStream::END) continue;
        EXPECT_EQ(stream->failed(), fails);
        EXPECT_EQ(stream->position() < 100000, fails);
        errno = 0;
        EXPECT_EQ(stream->get(), ByteStream::END);
        EXPECT_EQ(errno, fails ? EISDIR : 0);
    }
}

TEST(Streams, ClosedWhereMemoryRunsOut) {
    qvox_test::write_file("file", "x");
    const int descriptor = next_descriptor();
    const auto expect_refused = [&](auto open) {
        memoryIsOut = true;
        bool isRefused = false;
        try {
            open();
        } catch (const std::bad_alloc&) {
            isRefused = true;
        }
        memoryIsOut = false;
        EXPECT_TRUE(isRefused);
        EXPECT_EQ(next_descriptor(), descriptor);
    };
    expect_refused([] { ByteStream::open("file"); });
    expect_refused([] { ByteStream::openRegular("file"); });
    expect_refused([] { ByteSink::open("file"); });
    expect_refused([] { ByteSink::standardOutput(); });
}

}  // namespace
}  // namespace qvox
