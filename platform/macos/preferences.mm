#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"

namespace zorvane::platform::macos
{

namespace
{

class UserDefaults final : public Preferences
{
public:
    explicit UserDefaults(NSUserDefaults *defaults)
        : m_defaults(defaults)
    {
    }

    /** A short program may end before the system has passed on what was set. */
    ~UserDefaults() override { flush(); }
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    [[nodiscard]] bool contains(const QString &key) const override
    {
        @autoreleasepool {
            return object(key) != nil;
        }
    }

    [[nodiscard]] bool boolean(const QString &key) const override
    {
        @autoreleasepool {
            return [m_defaults boolForKey:key.toNSString()];
        }
    }

    [[nodiscard]] std::optional<QByteArray> data(const QString &key) const override
    {
        @autoreleasepool {
            const id value = object(key);
            if (![value isKindOfClass:NSData.class])
                return std::nullopt;
            return QByteArray::fromNSData(value);
        }
    }

    [[nodiscard]] std::optional<QDateTime> date(const QString &key) const override
    {
        @autoreleasepool {
            const id value = object(key);
            if (![value isKindOfClass:NSDate.class])
                return std::nullopt;
            return QDateTime::fromNSDate(value).toUTC();
        }
    }

    [[nodiscard]] std::optional<QString> string(const QString &key) const override
    {
        @autoreleasepool {
            return textOf(object(key)); // stringForKey: would turn numbers into texts
        }
    }

    void setBoolean(const QString &key, bool value) override
    {
        @autoreleasepool {
            [m_defaults setBool:value forKey:key.toNSString()];
        }
    }

    void setData(const QString &key, const QByteArray &value) override
    {
        set(key, [&] { return value.toNSData(); });
    }

    void setDate(const QString &key, const QDateTime &value) override
    {
        set(key, [&] { return value.toNSDate(); });
    }

    void setString(const QString &key, const QString &value) override
    {
        set(key, [&] { return value.toNSString(); });
    }

    void synchronize() override { flush(); }

private:
    void flush()
    {
        @autoreleasepool {
            [m_defaults synchronize];
        }
    }

    [[nodiscard]] id object(const QString &key) const
    {
        return [m_defaults objectForKey:key.toNSString()];
    }

    template <typename MakeValue> void set(const QString &key, const MakeValue &makeValue)
    {
        @autoreleasepool {
            [m_defaults setObject:makeValue() forKey:key.toNSString()];
        }
    }

    NSUserDefaults *const m_defaults;
};

class UserDefaultsSuites final : public PreferencesSuites
{
public:
    [[nodiscard]] std::unique_ptr<Preferences> open(const QString &name) override
    {
        @autoreleasepool {
            NSUserDefaults *const suite =
                [[NSUserDefaults alloc] initWithSuiteName:name.toNSString()];
            if (suite == nil)
                return nullptr;
            return std::make_unique<UserDefaults>(suite);
        }
    }
};

} // namespace

std::unique_ptr<Preferences> makePreferences()
{
    @autoreleasepool {
        return std::make_unique<UserDefaults>(NSUserDefaults.standardUserDefaults);
    }
}

std::unique_ptr<PreferencesSuites> makePreferencesSuites()
{
    return std::make_unique<UserDefaultsSuites>();
}

} // namespace zorvane::platform::macos
