#include "platform/simulated/embedded_signature.h"

#include "platform/simulated/mach_o.h"
#include "tests/signed_code/signed_code.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zorvane::platform;
using namespace zorvane::platform::simulated;
using namespace zorvane::tests;

namespace
{

const QString noCode = u"no code"_s;
const QString notMachO = u"not Mach-O"_s;
const QString absent = u"absent"_s;
const QString damaged = u"damaged"_s;

/** What is read from @p file, as one line. */
QString readingOf(const QByteArray &file)
{
    MemorySource source(
        std::span(reinterpret_cast<const std::uint8_t *>(file.constData()), size_t(file.size())));
    WindowSource window(source);
    const ByteRange bytes(window);
    if (!isMachO(bytes))
        return notMachO;
    const auto reading = readEmbeddedSignature(bytes);
    if (!reading)
        return noCode;
    if (std::holds_alternative<Absent>(*reading))
        return absent;
    const auto *information = std::get_if<SigningInformation>(&*reading);
    if (!information)
        return damaged;
    const auto &team = information->teamIdentifier;
    return *information->identifier + (team ? u" of "_s + *team : QString());
}

QByteArray programWith(const QByteArray &signature)
{
    return machO({.signature = signature});
}

/** A signed program whose identifier tells it from others. */
QByteArray named(const QByteArray &identifier, const ImageForm &form = {})
{
    ImageForm result = form;
    result.signature = signature({.identifier = identifier});
    return machO(result);
}

void row(const char *name, const QByteArray &file, const QString &reading)
{
    QTest::newRow(name) << file << reading;
}

void addColumns()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("reading");
}

void checkRow()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, reading);
    QCOMPARE(readingOf(file), reading);
}

} // namespace

class TestEmbeddedSignature : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosesTheSlice_data()
    {
        addColumns();
        const SliceForm intel{cpuX86_64, 3, named("intel")};
        const SliceForm arm{cpuArm64, 0, named("arm")};
        const SliceForm variant{cpuArm64, 0x80000002, named("variant")};
        const SliceForm powerPc{cpuPowerPc, 0, named("ppc")};
        const SliceForm unsignedIntel{cpuX86_64, 3, machO()};
        const SliceForm archive{cpuPowerPc, 0, QByteArray("!<arch>\n").leftJustified(64)};

        row("thin file", named("thin"), u"thin"_s);
        row("arm64 behind another slice", universal({{intel, arm}}), u"arm"_s);
        row("arm64 in front", universal({{arm, intel}}), u"arm"_s);
        row("arm64 behind a variant of it", universal({{variant, arm}}), u"arm"_s);
        row("variant of arm64 behind others", universal({{intel, variant}}), u"variant"_s);
        row("first slice where there is no arm64", universal({{powerPc, intel}}), u"ppc"_s);
        row("first slice unsigned", universal({{unsignedIntel, arm}}), u"arm"_s);
        row("first slice no image", universal({{archive, arm}}), notMachO);
        row("chosen slice no image", universal({{intel, {cpuArm64, 0, archive.bytes}}}), damaged);
        row("no counted slice", universal({{intel}, 0xCAFEBABE, 0}), noCode);
        row("arm64 behind the counted slices", universal({{intel, arm}, 0xCAFEBABE, 1}), u"arm"_s);
        row("other slice behind the counted ones", universal({{powerPc, intel}, 0xCAFEBABE, 1}),
            u"ppc"_s);
        row("64-bit universal file", universal({{arm}, 0xCAFEBABF}), notMachO);
        row("universal file of the other byte order", universal({{arm}, 0xBEBAFECA}), notMachO);
        row("100 slices", manySlices(100), u"slice"_s);
        row("101 slices", manySlices(101), noCode);
        row("equal offsets", universal({{intel, {cpuArm64, 0, arm.bytes, 4096}}}), noCode);
        row("chosen slice beyond the end",
            universal({{intel, {cpuArm64, 0, arm.bytes, 0x7FFFFFFF}}}), noCode);
        row("header cut behind the counted slices", universal({{arm}}).left(28), notMachO);
    }
    void choosesTheSlice() { checkRow(); }

    void needsOneEntryMoreThanCounted()
    {
        // Only a slice that overlaps its own entry leaves the file shorter than two entries.
        const QByteArray image = QByteArray("\xCE\xFA\xED\xFE") + number32(7, ByteOrder::Little)
            + number32(8, ByteOrder::Big) + number32(2, ByteOrder::Little) + QByteArray(12, '\0');
        const QByteArray file
            = number32(0xCAFEBABE, ByteOrder::Big) + number32(1, ByteOrder::Big) + image;
        QCOMPARE(readingOf(file.leftJustified(8 + 2 * 20 - 1, '\0')), noCode);
        QCOMPARE(readingOf(file.leftJustified(8 + 2 * 20, '\0')), absent);
    }

    void takesLoadedImagesOnly_data()
    {
        addColumns();
        const QList<std::uint32_t> loaded{2, 5, 6, 7, 8, 11};
        for (std::uint32_t fileType = 0; fileType < 14; ++fileType) {
            const QByteArray name = "file type " + QByteArray::number(fileType);
            row(name.constData(), named("x", {.fileType = fileType}),
                loaded.contains(fileType) ? u"x"_s : notMachO);
        }
        row("32-bit image", named("x", {.is64Bit = false}), u"x"_s);
        row("big-endian image", named("x", {.order = ByteOrder::Big}), u"x"_s);
        row("big-endian 32-bit image",
            named("x", {.is64Bit = false, .order = ByteOrder::Big, .cpuType = cpuPowerPc}), u"x"_s);
        row("empty file", {}, notMachO);
        row("text", "#!/bin/sh\necho hello, this is a text file\n", notMachO);
        row("header cut short", named("x").left(27), notMachO);
        row("universal file inside another",
            universal({{{cpuArm64, 0, universal({{{cpuArm64, 0, named("x")}}})}}}), notMachO);
    }
    void takesLoadedImagesOnly() { checkRow(); }

    void findsTheSignatureCommand_data()
    {
        addColumns();
        const QByteArray sound = signature();
        const auto with = [&](ImageForm form) {
            if (!form.signature)
                form.signature = sound;
            return machO(form);
        };
        const QString x = u"com.example.Tool"_s;
        row("no signature command", machO({.commands = loadCommand(0x19, 72)}), absent);
        row("no commands", machO(), absent);
        row("behind other commands", with({.commands = loadCommand(0x19, 72) + loadCommand(2, 24)}),
            x);
        row("first of two counts", with({.commands = loadCommand(0x1D, 16)}), damaged);
        row("damage behind it does not matter", machO({.signature = sound, .commandsSize = 16}), x);
        row("command of size 0", with({.commands = loadCommand(0x19, 0).leftJustified(8, 0)}),
            damaged);
        row("command of size 7", with({.commands = loadCommand(0x19, 7).leftJustified(8, 0)}),
            damaged);
        row("command beyond the commands",
            with({.commands = loadCommand(0x19, 8), .commandsSize = 15}), damaged);
        row("last command runs past the commands",
            machO({.commands = loadCommand(0x19, 72), .commandsSize = 71}), damaged);
        row("commands beyond the file", machO({.commandsSize = 1}), damaged);
        row("far too many commands", machO({.commandsSize = 0xFFFFFFFF}), damaged);
        row("signature command too short", with({.signatureCommandSize = 12}), damaged);
        row("signature command longer than needed", with({.signatureCommandSize = 24}), x);
        row("data beyond the file", with({.dataOffset = 0xFFFFFF00}), damaged);
        row("data ends beyond the file", with({.dataSize = 0xFFFFFFFF}), damaged);
        row("no data", with({.dataSize = 0}), damaged);
        row("padding behind the super blob", machO({.signature = sound + QByteArray(100, '\0')}),
            x);
    }
    void findsTheSignatureCommand() { checkRow(); }

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

    void checksTheCodeDirectory_data()
    {
        addColumns();
        const QString x = u"com.example.Tool"_s;
        const auto with = [](const DirectoryForm &form) { return programWith(signature(form)); };
        row("wrong magic", with({.magic = 0xFADE0C01}), damaged);
        row("version too old", with({.version = 0x20000}), damaged);
        row("oldest version", with({.version = 0x20001}), x);
        row("newest version", with({.version = 0x2F000}), x);
        row("version too new", with({.version = 0x2F001}), damaged);
        row("length beyond the blob", with({.length = 100000}), damaged);
        row("length cuts the fields", with({.length = 43}), damaged);
        row("length 0", with({.length = 0}), damaged);
        row("empty identifier", with({.identifier = ""}), QString());
        row("long identifier", with({.identifier = QByteArray(100000, 'x')}),
            QString(100000, u'x'));
        row("identifier longer than any real one",
            with({.identifier = QByteArray(2 * 1024 * 1024, 'x')}), damaged);
        row("identifier with a letter beyond ASCII", with({.identifier = "caf\xC3\xA9"}),
            u"café"_s);
        row("identifier no UTF-8", with({.identifier = "caf\xE9"}), damaged);
        row("identifier out of range", with({.identifierOffset = 100000}), damaged);
        row("identifier at the very end", with({.identifierOffset = endOfDirectory}), damaged);
        row("identifier without its end",
            with({.hashSize = 0, .identifierOffset = 88, .length = 104}), damaged);
        row("team out of range", with({.team = "T", .teamOffset = 0xFFFFFFFF}), damaged);
        row("team without its end", with({.team = "T", .hashSize = 0, .length = 106}), damaged);
        row("team out of range, version before teams",
            with({.team = "T", .version = 0x20100, .teamOffset = 0xFFFFFFFF}), x);
        row("hashes out of range", with({.hashOffset = 100000}), damaged);
        row("hashes end out of range", with({.hashOffset = 260}), damaged);
        row("hashes of special slots begin in front", with({.hashOffset = 63}), damaged);
        row("very many special slots",
            with({.hashSize = 255, .specialSlotCount = 0, .codeSlotCount = 0xFFFFFFFF}), damaged);
    }
    void checksTheCodeDirectory() { checkRow(); }

    void comparesPagesWithTheCodeLimit_data()
    {
        addColumns();
        const QString x = u"com.example.Tool"_s;
        const auto with = [](const DirectoryForm &form) { return programWith(signature(form)); };
        row("one slot too many", with({.codeSlotCount = 4}), damaged);
        row("one slot too few", with({.codeSlotCount = 2}), damaged);
        row("exact multiple of the page", with({.codeLimit = 8192}), x);
        row("one byte more", with({.codeLimit = 8193}), x);
        row("no code but pages", with({.codeLimit = 0, .codeSlotCount = 0}), damaged);
        row("one page for all", with({.pageShift = 0}), x);
        row("one page for nothing", with({.codeLimit = 0, .pageShift = 0}), x);
        row("two slots without pages", with({.pageShift = 0, .codeSlotCount = 2}), damaged);
        row("no slot without pages", with({.pageShift = 0, .codeSlotCount = 0}), damaged);
        row("long limit counts", with({.codeLimit = 1, .longCodeLimit = 9000}), x);
        row("long limit in an older version is not there",
            with({.version = 0x20200, .codeLimit = 1, .longCodeLimit = 9000}), damaged);
        row("enormous pages", with({.pageShift = 255, .codeSlotCount = 1}), x);
    }
    void comparesPagesWithTheCodeLimit() { checkRow(); }

    void everyCutFileIsReadWithinItsBounds()
    {
        const QByteArray file = universal({{{cpuX86_64, 3, named("intel")},
            {cpuArm64, 0, programWith(signature({.team = "T"}))}}});
        const QString whole = readingOf(file);
        QCOMPARE(whole, u"com.example.Tool of T"_s);
        for (qsizetype size = 0; size < file.size(); ++size) {
            // A copy of its own, so that a sanitizer sees a read behind its end.
            const QString reading = readingOf(QByteArray(file.constData(), size));
            QVERIFY(
                reading == notMachO || reading == noCode || reading == damaged || reading == whole);
        }
    }

private:
    static constexpr std::uint32_t endOfDirectory = 88 + 17 + 5 * 32;

    static QByteArray manySlices(std::uint32_t count)
    {
        UniversalForm form;
        for (std::uint32_t i = 0; i < count; ++i)
            form.slices.append({cpuX86_64, i, named("slice")});
        return universal(form);
    }
};

QTEST_APPLESS_MAIN(TestEmbeddedSignature)
#include "tst_embedded_signature.moc"
