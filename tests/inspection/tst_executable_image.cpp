#include "inspection/executable_image.h"

#include "tests/signed_code/signed_code.h"

#include <filesystem>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/stat.h>
#include <utility>

using namespace Qt::StringLiterals;
using namespace zorvane::inspection;
using namespace zorvane::tests;
using zorvane::platform::ByteOrder;
using zorvane::platform::MemorySource;

namespace
{

/** Counts what is read of the bytes below. */
class CountingSource final : public zorvane::platform::ByteSource
{
public:
    explicit CountingSource(QByteArray bytes)
        : m_bytes(std::move(bytes))
        , m_source(std::span(
              reinterpret_cast<const std::uint8_t *>(m_bytes.constData()), size_t(m_bytes.size())))
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return m_source.size(); }
    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) override
    {
        ++reads;
        longest = std::max(longest, into.size());
        return m_source.read(offset, into);
    }

    int reads = 0;
    std::size_t longest = 0;

private:
    QByteArray m_bytes;
    MemorySource m_source;
};

bool isExecutable(const QByteArray &bytes)
{
    CountingSource source(bytes);
    return isMainExecutableImage(source);
}

QByteArray thin(std::uint32_t magic, std::uint32_t fileType, ByteOrder order)
{
    return number32(magic, ByteOrder::Little) + QByteArray(8, '\x7F') + number32(fileType, order);
}

/** A universal header with one slice entry, in either byte order. */
QByteArray header(std::uint32_t magic, std::uint64_t offset, bool is64Bit, ByteOrder order)
{
    return number32(magic, ByteOrder::Big) + number32(1, order) + QByteArray(8, '\x7F')
        + (is64Bit ? number64(offset, order)
                   : number32(static_cast<std::uint32_t>(offset), order) + number32(99, order));
}

std::filesystem::path pathOf(const QString &path)
{
    return path.toStdString();
}

} // namespace

class TestExecutableImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsThinHeaders_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isExecutableImage");
        const ByteOrder little = ByteOrder::Little;
        const ByteOrder big = ByteOrder::Big;
        QTest::newRow("32-bit") << thin(0xFEEDFACE, 2, little) << true;
        QTest::newRow("64-bit") << thin(0xFEEDFACF, 2, little) << true;
        QTest::newRow("big-endian 32-bit") << thin(0xCEFAEDFE, 2, big) << true;
        QTest::newRow("big-endian 64-bit") << thin(0xCFFAEDFE, 2, big) << true;
        QTest::newRow("type in the wrong byte order") << thin(0xFEEDFACF, 2, big) << false;
        QTest::newRow("object file") << thin(0xFEEDFACF, 1, little) << false;
        QTest::newRow("library") << thin(0xFEEDFACF, 6, little) << false;
        QTest::newRow("plug-in") << thin(0xCFFAEDFE, 8, big) << false;
        QTest::newRow("type 0x0200") << thin(0xFEEDFACF, 0x0200, little) << false;
        QTest::newRow("unknown magic") << thin(0xFEEDFAD0, 2, little).leftJustified(64) << false;
        QTest::newRow("16 bytes are enough") << thin(0xFEEDFACF, 2, little).left(16) << true;
        QTest::newRow("15 bytes are not") << thin(0xFEEDFACF, 2, little).left(15) << false;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("script") << QByteArray("#!/bin/sh\necho this is no image at all\n") << false;
        QTest::newRow("ELF") << QByteArray("\x7F"
                                           "ELF\2\1\1")
                                    .leftJustified(64, '\0')
                             << false;
        QTest::newRow("whole program") << machO() << true;
        QTest::newRow("whole library") << machO({.fileType = 6}) << false;
    }
    void readsThinHeaders()
    {
        QFETCH(QByteArray, bytes);
        QTEST(isExecutable(bytes), "isExecutableImage");
    }

    void readsUniversalHeaders_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isExecutableImage");
        const ByteOrder little = ByteOrder::Little;
        const ByteOrder big = ByteOrder::Big;
        const QByteArray program = machO();
        // The first slice lies within the header, so that nothing but the header's length matters.
        const QByteArray shortest = number32(0xBEBAFECA, big) + '\0' + number32(0xCFFAEDFE, little)
            + QByteArray(7, '\0') + number32(5, little) + number32(2, little);
        const auto with
            = [&](const QByteArray &front) { return front.leftJustified(512, '\0') + program; };
        QTest::newRow("32-bit") << with(header(0xCAFEBABE, 512, false, big)) << true;
        QTest::newRow("64-bit") << with(header(0xCAFEBABF, 512, true, big)) << true;
        QTest::newRow("little-endian") << with(header(0xBEBAFECA, 512, false, little)) << true;
        QTest::newRow("little-endian 64-bit")
            << with(header(0xBFBAFECA, 512, true, little)) << true;
        QTest::newRow("offset in the wrong byte order")
            << with(header(0xBEBAFECA, 512, false, big)) << false;
        QTest::newRow("64-bit offset beyond all files")
            << with(header(0xCAFEBABF, 0xFFFFFFFFFFFFFFFF, true, big)) << false;
        QTest::newRow("offset beyond the file")
            << with(header(0xCAFEBABE, 100000, false, big)) << false;
        QTest::newRow("15 bytes of the slice")
            << with(header(0xCAFEBABE, 512, false, big)).left(512 + 15) << false;
        QTest::newRow("16 bytes of the slice")
            << with(header(0xCAFEBABE, 512, false, big)).left(512 + 16) << true;
        QTest::newRow("23 bytes are not enough") << shortest.left(23) << false;
        QTest::newRow("24 bytes are enough") << shortest << true;
        QTest::newRow("slice is universal too") << with(header(0xCAFEBABE, 0, false, big)) << false;
        QTest::newRow("first slice a library, second a program")
            << universal({{{cpuX86_64, 3, machO({.fileType = 6})}, {cpuArm64, 0, program}}})
            << false;
        QTest::newRow("first slice a program, second a library")
            << universal({{{cpuX86_64, 3, program}, {cpuArm64, 0, machO({.fileType = 6})}}})
            << true;
        QTest::newRow("first slice big-endian")
            << universal({{{cpuPowerPc, 0, machO({.is64Bit = false, .order = big})}}}) << true;
        QTest::newRow("compiled Java class")
            << (number32(0xCAFEBABE, big) + number32(0x41, big)).leftJustified(512, '\x01')
            << false;
    }
    void readsUniversalHeaders()
    {
        QFETCH(QByteArray, bytes);
        QTEST(isExecutable(bytes), "isExecutableImage");
    }

    void reads32BytesAndAnother32AtMost()
    {
        CountingSource thinFile(machO());
        QVERIFY(isMainExecutableImage(thinFile));
        QCOMPARE(thinFile.reads, 1);
        QCOMPARE(thinFile.longest, size_t(32));

        CountingSource universalFile(
            universal({{{cpuX86_64, 3, machO()}, {cpuArm64, 0, machO()}}}));
        QVERIFY(isMainExecutableImage(universalFile));
        QCOMPARE(universalFile.reads, 2);
        QCOMPARE(universalFile.longest, size_t(32));
    }

    void readsRegularFilesOnly()
    {
        QTemporaryDir folder;
        const auto at
            = [&](const char *name) { return pathOf(folder.filePath(QLatin1String(name))); };
        QFile file(folder.filePath(u"program"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(machO());
        file.close();

        QVERIFY(isMainExecutableImage(at("program")));
        QVERIFY(!isMainExecutableImage(at("missing")));
        QVERIFY(!isMainExecutableImage(pathOf(folder.path())));
        std::filesystem::create_symlink(at("program"), at("link"));
        QVERIFY(!isMainExecutableImage(at("link")));
        // Nobody writes to it: a read that waited would never end.
        QCOMPARE(::mkfifo(at("pipe").c_str(), 0700), 0);
        QVERIFY(!isMainExecutableImage(at("pipe")));
        QVERIFY(!isMainExecutableImage("/dev/zero"));
    }
};

QTEST_APPLESS_MAIN(TestExecutableImage)
#include "tst_executable_image.moc"
