#include "tests/platform/embedded_reading.h"

using namespace Qt::StringLiterals;
using namespace zorvane::tests;
using namespace zorvane::platform;
using namespace zorvane::platform::simulated;

namespace
{

/** Counts what is read of the bytes below. */
class CountingSource final : public ByteSource
{
public:
    explicit CountingSource(const QByteArray &bytes)
        : m_source(std::span(
            reinterpret_cast<const std::uint8_t *>(bytes.constData()), size_t(bytes.size())))
    {
    }

    [[nodiscard]] std::uint64_t size() const override { return m_source.size(); }
    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<std::uint8_t> into) override
    {
        const std::size_t count = m_source.read(offset, into);
        bytesRead += count;
        return count;
    }

    std::size_t bytesRead = 0;

private:
    MemorySource m_source;
};

} // namespace

/** The super blob and the choice among its code directories. */
class TestEmbeddedSignature : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheSuperBlob_data()
    {
        addColumns();
        const QString x = u"com.example.Tool"_s;
        const QByteArray directory = codeDirectory();
        const IndexEntry main{slotCodeDirectory, directory};
        const QByteArray other = codeDirectory({.identifier = "other"});
        const auto with = [&](const SuperBlobForm &form) { return programWith(superBlob(form)); };

        row("one code directory", with({{main}}), x);
        row("empty index", with({}), absent);
        row("no code directory", with({{{slotRequirements, blob(0xFADE0C01, {})}}}), absent);
        row("alternate without a mandatory one", with({{{slotAlternate, directory}}}), absent);
        row("wrong magic", with({{main}, 0xFADE0CC1}), damaged);
        row("length beyond the data", with({{main}, 0xFADE0CC0, {}, 100000}), damaged);
        row("length cuts the blob", with({{main}, 0xFADE0CC0, {}, 100}), damaged);
        row("length cuts the index", with({{main}, 0xFADE0CC0, {}, 19}), damaged);
        row("length cuts the header", with({{main}, 0xFADE0CC0, {}, 11}), damaged);
        row("length 0", with({{main}, 0xFADE0CC0, {}, 0}), damaged);
        row("more entries than there are", with({{main}, 0xFADE0CC0, 100}), damaged);
        row("very many entries", with({{main}, 0xFADE0CC0, 0xFFFFFFFF}), damaged);
        row("offset 0 is absent", with({{main, {slotRequirements, {}, 0}}}), x);
        row("offset 0 of the code directory", with({{{slotCodeDirectory, {}, 0}}}), absent);
        row("first entry of a type counts", with({{main, {slotCodeDirectory, other}}}), x);
        row("first entry counts though absent", with({{{slotCodeDirectory, {}, 0}, main}}), absent);
        row("offset inside the index", with({{main, {slotRequirements, {}, 19}}}), damaged);
        row("offset at the end", with({{main, {slotRequirements, {}, 100000}}}), damaged);
        row("offset wraps around", with({{main, {slotRequirements, {}, 0xFFFFFFFC}}}), damaged);
        row("blob of no interest runs out",
            with({{main,
                {slotRequirements,
                    number32(0xFADE0C01, ByteOrder::Big) + number32(9, ByteOrder::Big)}}}),
            damaged);
        row("cut file", programWith(superBlob({{main}})).chopped(1), damaged);
    }
    void readsTheSuperBlob() { checkRow(); }

    void choosesTheCodeDirectory_data()
    {
        addColumns();
        // Each directory is named after its hash type.
        const auto directory = [](std::uint8_t hashType) {
            return codeDirectory(
                {.identifier = "hash " + QByteArray::number(hashType), .hashType = hashType});
        };
        const auto with = [&](const QList<std::uint8_t> &hashTypes) {
            SuperBlobForm form{{{slotCodeDirectory, directory(hashTypes.front())}}};
            for (qsizetype i = 1; i < hashTypes.size(); ++i)
                form.entries.append(
                    {slotAlternate + static_cast<std::uint32_t>(i) - 1, directory(hashTypes[i])});
            return programWith(superBlob(form));
        };
        row("SHA-1 alone", with({1}), u"hash 1"_s);
        row("SHA-256 over SHA-1", with({1, 2}), u"hash 2"_s);
        row("SHA-256 stays over an alternate SHA-1", with({2, 1}), u"hash 2"_s);
        row("SHA-384 over SHA-256", with({1, 2, 4}), u"hash 4"_s);
        row("SHA-256 over its truncated form", with({3, 2}), u"hash 2"_s);
        row("truncated SHA-256 over SHA-1", with({1, 3}), u"hash 3"_s);
        row("all", with({1, 3, 2, 4}), u"hash 4"_s);
        row("unknown type beside a known one", with({1, 9}), u"hash 1"_s);
        row("unknown type alone", with({9}), damaged);
        row("equal types", with({2, 2}), damaged);
        row("five alternates", with({1, 9, 10, 11, 12, 2}), u"hash 2"_s);
        row("sixth alternate is not looked at", with({1, 9, 10, 11, 12, 13, 2}), u"hash 1"_s);
        row("nothing behind a gap is looked at",
            programWith(superBlob({{{slotCodeDirectory, directory(1)},
                {slotAlternate, directory(3)}, {slotAlternate + 2, directory(2)}}})),
            u"hash 3"_s);
        row("damaged alternate",
            programWith(superBlob({{{slotCodeDirectory, directory(2)},
                {slotAlternate, codeDirectory({.hashType = 1, .version = 0x20000})}}})),
            damaged);
    }
    void choosesTheCodeDirectory() { checkRow(); }

    void tellsTheTeamOfTheWinner_data()
    {
        addColumns();
        const DirectoryForm teamed{.team = "TEAM123456"};
        const QString both = u"com.example.Tool of TEAM123456"_s;
        const QString alone = u"com.example.Tool"_s;
        const IndexEntry main{slotCodeDirectory, codeDirectory(teamed)};
        const auto with = [](const SuperBlobForm &form) { return programWith(superBlob(form)); };

        row("with a cryptographic signature", with({{main, {slotCms, cmsBlob()}}}), both);
        row("its content does not matter", with({{main, {slotCms, blob(0xFADE0B01, "anything")}}}),
            both);
        row("without one, as linkers sign", with({{main}}), alone);
        row("its wrapper's magic wrong", with({{main, {slotCms, blob(0xFADE0C01, {})}}}), alone);
        row("its offset 0", with({{main, {slotCms, {}, 0}}}), alone);
        row("ad-hoc", programWith(signature()), alone);
        row("empty team", programWith(signature({.team = ""})), u"com.example.Tool of "_s);
        row("team with blanks", programWith(signature({.team = " T "})),
            u"com.example.Tool of  T "_s);
        row("team no UTF-8", programWith(signature({.team = "\xFF"})), alone);
        row("team only in the loser",
            with({{{slotCodeDirectory, codeDirectory({.team = "OLD", .hashType = 1})},
                {slotAlternate, codeDirectory()}, {slotCms, cmsBlob()}}}),
            alone);
        row("version before teams", programWith(signature({.team = "OLD", .version = 0x20100})),
            alone);
    }
    void tellsTheTeamOfTheWinner() { checkRow(); }

    void aCutFileIsReadWithinItsBounds_data()
    {
        const QByteArray thin = programWith(signature({.team = "T"}));
        const QByteArray twoSlices
            = universal({{{cpuX86_64, 3, named("intel")}, {cpuArm64, 0, thin}}});
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("step");
        QTest::newRow("thin") << thin << 1;
        // Most of it is padding.
        QTest::newRow("universal") << twoSlices << 61;
    }
    void aCutFileIsReadWithinItsBounds()
    {
        QFETCH(QByteArray, file);
        QFETCH(int, step);
        const QString whole = u"com.example.Tool of T"_s;
        QCOMPARE(readingOf(file), whole);
        const QStringList possible{notMachO, noCode, absent, damaged, whole};
        for (qsizetype size = 0; size < file.size(); size += step) {
            // A copy of its own, so that a sanitizer sees a read behind its end.
            QVERIFY(possible.contains(readingOf(QByteArray(file.constData(), size))));
        }
    }

    void aLongProgramCostsWhatAShortOneDoes()
    {
        // 100 MiB of code have 25,600 hashes, 800 KiB of them.
        const auto bytesRead = [](std::uint32_t codeLimit) {
            const QByteArray file = programWith(superBlob({{
                {slotCodeDirectory, codeDirectory({.codeLimit = codeLimit})},
                {slotRequirements, blob(0xFADE0C01, QByteArray(4, 0))},
                {slotCms, cmsBlob()},
            }}));
            CountingSource source(file);
            WindowSource window(source);
            const auto reading = readEmbeddedSignature(ByteRange(window));
            return reading && std::holds_alternative<SigningInformation>(*reading)
                ? std::optional(source.bytesRead)
                : std::nullopt;
        };
        const auto ofLongProgram = bytesRead(100 * 1024 * 1024);
        QVERIFY(ofLongProgram);
        QVERIFY(*ofLongProgram <= size_t{5} * 4096);
        QVERIFY(bytesRead(100 * 1024));
    }
};

QTEST_APPLESS_MAIN(TestEmbeddedSignature)
#include "tst_embedded_signature.moc"
