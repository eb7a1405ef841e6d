#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

#import <Security/Security.h>

namespace zorvane::platform::macos
{

namespace
{

static_assert(kSecCSDefaultFlags == 0);
static_assert(kSecCSSigningInformation == 2);

class SecurityCodeSignatures final : public CodeSignatures
{
public:
    [[nodiscard]] std::optional<SigningInformation> signingInformation(
        const std::filesystem::path &path) const override
    {
        @autoreleasepool {
            NSURL *const url = urlOf(path);
            if (url == nil)
                return std::nullopt;
            SecStaticCodeRef created = nullptr;
            if (SecStaticCodeCreateWithPath((__bridge CFURLRef)url, kSecCSDefaultFlags, &created)
                != errSecSuccess)
                return std::nullopt;
            const CoreFoundationPointer<SecStaticCodeRef> code(created);
            CFDictionaryRef copied = nullptr;
            if (SecCodeCopySigningInformation(code.get(), kSecCSSigningInformation, &copied)
                != errSecSuccess)
                return std::nullopt;
            NSDictionary *const information = CFBridgingRelease(copied);
            return SigningInformation{textOf(information[(__bridge id)kSecCodeInfoIdentifier]),
                textOf(information[(__bridge id)kSecCodeInfoTeamIdentifier])};
        }
    }
};

} // namespace

std::unique_ptr<CodeSignatures> makeCodeSignatures()
{
    return std::make_unique<SecurityCodeSignatures>();
}

} // namespace zorvane::platform::macos
