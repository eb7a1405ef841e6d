#include "bench/report.h"
#include "platform/simulated/simulated_code_signatures.h"
#include "tests/signed_code/signed_code.h"

#include <cstdlib>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace zorvane;

namespace
{

constexpr int readsPerRound = 100;

/** A signed program of @p codeSize bytes in front of its signature, laid out as real ones are. */
QByteArray program(std::uint32_t codeSize)
{
    using namespace tests;
    const QByteArray signature = superBlob({{
        {slotCodeDirectory,
            codeDirectory({.identifier = "com.example.Program",
                .team = "ABCDE12345",
                .codeLimit = codeSize,
                .specialSlotCount = 7})},
        {slotRequirements, blob(0xFADE0C01, QByteArray(170, 'r'))},
        {slotCms, blob(0xFADE0B01, QByteArray(9000, 's'))},
    }});
    QByteArray commands;
    for (int i = 0; i < 30; ++i)
        commands += loadCommand(0x0C, 72);
    const QByteArray image
        = machO({.signature = signature, .commands = commands, .dataOffset = codeSize});
    return image.chopped(signature.size()).leftJustified(codeSize, 'c') + signature;
}

std::filesystem::path writeProgram(const QTemporaryDir &folder, std::uint32_t codeSize)
{
    QFile file(folder.filePath(QString::number(codeSize)));
    const QByteArray bytes = program(codeSize);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::exit(EXIT_FAILURE);
    return file.fileName().toStdString();
}

void readOften(const std::filesystem::path &path)
{
    const platform::simulated::SimulatedCodeSignatures signatures;
    for (int i = 0; i < readsPerRound; ++i) {
        const auto information = signatures.signingInformation(path);
        if (!information || information->teamIdentifier != u"ABCDE12345"_s)
            std::exit(EXIT_FAILURE);
    }
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const auto large = writeProgram(folder, 100'000'000);
    const auto small = writeProgram(folder, 100'000);
    const auto times = bench::compare(
        101, [&] { readOften(large); }, [&] { readOften(small); });
    bench::report(
        "code signature of a 100 MB executable", "of a 100 kB one", times, "ms for 100 reads", 1.5);
    return EXIT_SUCCESS;
}
