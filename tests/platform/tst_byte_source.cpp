#include "platform/binary_file.h"
#include "platform/byte_range.h"

#include "tests/bundle_files/bundle_files.h"

#include <QRandomGenerator>
#include <QTest>
#include <sys/stat.h>

using namespace zorvane::platform;
using namespace zorvane::tests;
namespace fs = std::filesystem;

namespace
{

constexpr std::uint64_t greatest = std::numeric_limits<std::uint64_t>::max();

std::vector<std::uint8_t> randomBytes(std::size_t size)
{
    QRandomGenerator random(1);
    std::vector<std::uint8_t> bytes(size);
    for (std::uint8_t &byte : bytes)
        byte = static_cast<std::uint8_t>(random.bounded(256));
    return bytes;
}

/** As many bytes of @p source from @p offset on as can be read, @p size at most. */
std::vector<std::uint8_t> bytesOf(ByteSource &source, std::uint64_t offset, std::size_t size)
{
    std::vector<std::uint8_t> bytes(size);
    bytes.resize(source.read(offset, bytes));
    return bytes;
}

} // namespace

class TestByteSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsUpToTheEnd()
    {
        const std::vector<std::uint8_t> bytes{1, 2, 3, 4};
        MemorySource source(bytes);
        QCOMPARE(source.size(), std::uint64_t(4));
        QCOMPARE(bytesOf(source, 0, 4), bytes);
        QCOMPARE(bytesOf(source, 2, 4), (std::vector<std::uint8_t>{3, 4}));
        QVERIFY(bytesOf(source, 4, 4).empty());
        QVERIFY(bytesOf(source, greatest, 4).empty());
    }

    void aWindowShowsWhatIsBelow()
    {
        const auto bytes = randomBytes(20'000);
        MemorySource source(bytes);
        WindowSource window(source);
        QRandomGenerator random(2);
        for (int i = 0; i < 20'000; ++i) {
            // Mostly close together, sometimes far away, beyond the end or too long for a window.
            const std::uint64_t place
                = random.bounded(10) == 0 ? random.bounded(21'000U) : 5'000 + random.bounded(300U);
            const std::size_t size = random.bounded(50) == 0 ? 6'000 : random.bounded(40U);
            QCOMPARE(bytesOf(window, place, size), bytesOf(source, place, size));
        }
        QVERIFY(bytesOf(window, greatest, 8).empty());
        QVERIFY(bytesOf(window, greatest - 4, 8).empty());
    }

    void nothingIsReadBeyondARange()
    {
        const std::vector<std::uint8_t> bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
        MemorySource source(bytes);
        const auto range = ByteRange(source).part(2, 8);
        QVERIFY(range);
        QCOMPARE(range->byteAt(0), std::uint8_t(2));
        QCOMPARE(range->uint32At(1, ByteOrder::Big), std::uint32_t(0x03040506));
        QCOMPARE(range->uint32At(1, ByteOrder::Little), std::uint32_t(0x06050403));
        QCOMPARE(range->uint64At(0, ByteOrder::Big), std::uint64_t(0x0203040506070809));
        QVERIFY(!range->uint64At(1, ByteOrder::Big));
        QVERIFY(!range->uint32At(5, ByteOrder::Big));
        QVERIFY(!range->byteAt(8));
        QVERIFY(!range->byteAt(greatest));
        QVERIFY(range->part(8, 0));
        QVERIFY(!range->part(9, 0));
        QVERIFY(!range->part(4, 5));
        QVERIFY(!range->part(4, greatest));
        QVERIFY(!range->part(greatest, 2));
        QCOMPARE(range->from(6)->size(), std::uint64_t(2));
        QVERIFY(!range->from(9));
        QVERIFY(!range->part(0, 4)->uint32At(1, ByteOrder::Big));
    }

    void readsFiles()
    {
        const ScratchFolder folder;
        const fs::path path = folder.path() / "file";
        writeFile(path, "0123456789");
        const auto file = BinaryFile::open(path, BinaryFile::Links::Refuse);
        QVERIFY(file);
        QCOMPARE(file->size(), std::uint64_t(10));
        QCOMPARE(bytesOf(*file, 8, 4), (std::vector<std::uint8_t>{'8', '9'}));
        QVERIFY(bytesOf(*file, 10, 4).empty());
        QVERIFY(bytesOf(*file, greatest, 4).empty());
        QVERIFY(bytesOf(*file, greatest / 2, 4).empty());
    }

    void opensRegularFilesOnly()
    {
        const ScratchFolder folder;
        const fs::path path = folder.path() / "file";
        const fs::path link = folder.path() / "link";
        const fs::path pipe = folder.path() / "pipe";
        writeFile(path, "0123456789");
        fs::create_symlink(path, link);
        QCOMPARE(::mkfifo(pipe.c_str(), 0700), 0);
        QVERIFY(BinaryFile::open(link, BinaryFile::Links::Follow));
        QVERIFY(!BinaryFile::open(link, BinaryFile::Links::Refuse));
        // Nobody writes to it: an open that waited would never end.
        QVERIFY(!BinaryFile::open(pipe, BinaryFile::Links::Follow));
        QVERIFY(!BinaryFile::open(folder.path(), BinaryFile::Links::Follow));
        QVERIFY(!BinaryFile::open(folder.path() / "missing", BinaryFile::Links::Follow));
        QVERIFY(!BinaryFile::open("/dev/null", BinaryFile::Links::Follow));
    }
};

QTEST_APPLESS_MAIN(TestByteSource)
#include "tst_byte_source.moc"
