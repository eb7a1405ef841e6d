#pragma once

#include "platform/code_signatures.h"
#include "platform/directory_walk.h"
#include "tests/bundle_files/bundle_files.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <optional>
#include <thread>
#include <utility>

/** @file Readings of bundles in whose midst something can happen. */
namespace zorvane::tests
{

/** The walk of this system; @p watch is called at each item, in the midst of it, with how many came
 * before in all walks. */
class WatchedWalk final : public platform::DirectoryWalk
{
public:
    WatchedWalk(const platform::DirectoryWalk &walk, std::function<void(int before)> watch)
        : m_walk(walk)
        , m_watch(std::move(watch))
    {
    }

    void walk(const std::filesystem::path &root, const Visitor &visit) const override
    {
        m_walk.walk(root, [&](std::string_view path, platform::ItemKind kind) {
            m_watch(m_items++);
            visit(path, kind);
        });
    }

    [[nodiscard]] int items() const { return m_items; }

private:
    const platform::DirectoryWalk &m_walk;
    const std::function<void(int before)> m_watch;
    mutable int m_items = 0;
};

/** One reading of a file's signature. */
struct SignatureReading {
    const std::filesystem::path &path;
    /** How many came before. */
    int before;
    /** Does it. */
    std::function<void()> perform;
};

/** The signatures of this system; @p read is called in the place of each reading. */
class WatchedSignatures final : public platform::CodeSignatures
{
public:
    WatchedSignatures(const platform::CodeSignatures &signatures,
        std::function<void(const SignatureReading &reading)> read)
        : m_signatures(signatures)
        , m_read(std::move(read))
    {
    }

    [[nodiscard]] std::optional<platform::SigningInformation> signingInformation(
        const std::filesystem::path &path) const override
    {
        std::optional<platform::SigningInformation> result;
        m_read({path, m_readings++, [&] { result = m_signatures.signingInformation(path); }});
        return result;
    }

    [[nodiscard]] int readings() const { return m_readings; }

private:
    const platform::CodeSignatures &m_signatures;
    const std::function<void(const SignatureReading &reading)> m_read;
    mutable int m_readings = 0;
};

/** A program on the disk that never stays as it is. */
class ChangingProgram
{
public:
    ChangingProgram(std::filesystem::path path, const QByteArray &content)
        : m_writer([this, path = std::move(path), content] {
            for (int i = 0; !m_ends; ++i) {
                // In place: the reader's file shrinks and grows under its hands.
                std::error_code ignored;
                std::filesystem::resize_file(
                    path, size_t(qsizetype(i) * 37 % content.size()), ignored);
                ++m_changes;
                writeFile(path, i % 3 == 0 ? QByteArray(5000, '\xca') : content, Mode::Executable);
                ++m_changes;
            }
        })
    {
    }
    ~ChangingProgram()
    {
        m_ends = true;
        m_writer.join();
    }
    ChangingProgram(const ChangingProgram &) = delete;
    ChangingProgram &operator=(const ChangingProgram &) = delete;

    [[nodiscard]] int changes() const { return m_changes; }
    void awaitChange() const
    {
        const int before = m_changes;
        while (m_changes == before)
            std::this_thread::yield();
    }

private:
    std::atomic<int> m_changes = 0;
    std::atomic<bool> m_ends = false;
    std::thread m_writer;
};

} // namespace zorvane::tests
