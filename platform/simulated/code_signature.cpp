#include "platform/simulated/code_signature.h"

#include "app/records/text.h"

#include <algorithm>
#include <vector>

namespace zorvane::platform::simulated
{

namespace
{

constexpr unsigned codeDirectoryLimit = 6;

Reading<std::vector<CodeDirectory>> readCodeDirectories(SignatureParts &parts)
{
    std::vector<CodeDirectory> directories;
    for (unsigned index = 0; index < codeDirectoryLimit; ++index) {
        auto reading = parts.codeDirectory(index);
        if (std::holds_alternative<Damaged>(reading))
            return Damaged();
        if (std::holds_alternative<Absent>(reading))
            break;
        auto &directory = std::get<CodeDirectory>(reading);
        if (std::ranges::find(directories, directory.hashType, &CodeDirectory::hashType)
            != directories.end())
            return Damaged();
        directories.push_back(std::move(directory));
    }
    if (directories.empty())
        return Absent();
    return directories;
}

} // namespace

Reading<SigningInformation> readSignature(SignatureParts &parts)
{
    const auto reading = readCodeDirectories(parts);
    if (std::holds_alternative<Absent>(reading))
        return Absent();
    const auto *directories = std::get_if<std::vector<CodeDirectory>>(&reading);
    if (directories == nullptr)
        return Damaged();

    const auto rank = [](const CodeDirectory &directory) { return hashRank(directory.hashType); };
    const auto winner = std::ranges::max_element(*directories, {}, rank);
    SigningInformation information{records::decodedUtf8(winner->identifier), std::nullopt};
    if (rank(*winner) == 0 || !information.identifier)
        return Damaged();
    if (winner->teamIdentifier && parts.hasCryptographicSignature())
        information.teamIdentifier = records::decodedUtf8(*winner->teamIdentifier);
    return information;
}

} // namespace zorvane::platform::simulated
