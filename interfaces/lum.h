// The common services: text, settings, localized texts, values, formatting and logging.
//
// None of these operations throws as far as its caller is concerned. Used from one thread only.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace lum
{

/// An 8-bit text made from a `String`.
class CString
{
public:
    explicit CString(std::string bytes) : bytes_(std::move(bytes)) {}

    /// NUL-terminated, valid while this object lives.
    const char* c_str() const { return bytes_.c_str(); }

private:
    std::string bytes_;
};

/// A text. UTF-8 by intent; whatever bytes it was made from are kept as they are.
class String
{
public:
    String() = default;
    String(const char* text) : bytes_(text == nullptr ? "" : text) {}
    explicit String(std::string_view text) : bytes_(text) {}
    explicit String(std::string text) : bytes_(std::move(text)) {}

    String& operator=(const char* text)
    {
        bytes_ = text == nullptr ? "" : text;
        return *this;
    }

    String operator+(const String& other) const
    {
        String sum;
        sum.bytes_.reserve(bytes_.size() + other.bytes_.size());
        sum.bytes_.append(bytes_).append(other.bytes_);
        return sum;
    }

    String& operator+=(const String& other)
    {
        bytes_ += other.bytes_;
        return *this;
    }

    /// Removes blanks, \t, \n, \v, \f and \r at both ends, in place.
    String& trim();

    /// Removes up to `count` bytes from the zero-based position on; a position behind the end removes nothing.
    void remove(unsigned pos, unsigned count);

    /// Bytes, the terminator not counted.
    unsigned size() const { return static_cast<unsigned>(bytes_.size()); }

    /// The text in 8-bit form, as the look-ups of `Resource` take it.
    CString getLowerByteString() const& { return CString(bytes_); }
    CString getLowerByteString() && { return CString(std::move(bytes_)); }

    /// The bytes themselves, valid while this object is neither changed nor gone.
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// The language in which names and texts are wanted.
class LumLocale
{
public:
    /// The process's locale.
    static const LumLocale& getGlobalLocale();

    /// The language's code as gettext names catalogues: "en", "de", "zh_CN".
    const std::string& language() const { return language_; }

    /// Selects the language that `getGlobalLocale` tells from now on; for the host.
    static void setGlobalLanguage(std::string language);

private:
    static LumLocale& global();

    std::string language_ = "en";
};

/// Settings and localized texts. Keys are case-sensitive.
class Resource
{
public:
    /// True, and `out` set, when the section has this setting; a setting may be empty. Otherwise `out` is untouched.
    static bool getSetting(const char* section, const char* key, String& out, const LumLocale& locale);

    /// True, and `out` set, when the locale's language has this text. Otherwise `out` is untouched.
    static bool getString(const char* section, const char* key, String& out, const LumLocale& locale);
};

/// The types that a text can be converted to.
enum LumType { LUM_TYPE_BOOL = 0 };

/// A typed value made from a text or a number; it may hold nothing.
class LumValue
{
public:
    explicit LumValue(const unsigned& number) : held_(number) {}

    /// Converts a text to the wanted type. Bool: "1 true yes on" and "0 false no off", in any case, blanks and tabs
    /// around them dropped; any other text is logged and gives a value that holds nothing. `quiet` keeps it out of
    /// the log.
    static LumValue getCorrectValue(const String& text, const LumType& type, bool quiet);

    /// Stores the bool; a value that holds none leaves the variable as it was.
    void get(bool& out) const;

    /// The number in decimal, filled up with zeros to `digits` digits; a bool as "true" or "false".
    String toString(unsigned digits) const;

    /// The number of digits that fills up nothing.
    static unsigned nilValue() { return 0; }

private:
    LumValue() = default;
    explicit LumValue(bool flag) : held_(flag) {}

    std::variant<std::monostate, bool, unsigned> held_;
};

/// Formats as the C library's `sprintf` does, without a limit of length.
String SprintfFormat(const char* format, ...);

enum TEMPERATURE_TYPE { TEMPERATURE_ABSOLUTE = 0 };
enum TEMPERATURE_UNIT { TEMPERATURE_CELSIUS = 0 };

/// A temperature in degrees Celsius.
class Temperature
{
public:
    /// `decimals` is how many decimals the value is shown with. The third argument is reserved and 0.
    Temperature(float value, unsigned char decimals, short reserved, TEMPERATURE_TYPE type);

    /// "25 °C", "0.005 °C": the decimals given at construction, at most `maxDecimals` of them.
    String toString(unsigned char maxDecimals, TEMPERATURE_UNIT unit) const;

private:
    float value_;
    unsigned char decimals_;
};

/// A calendar date and time.
class DateTime
{
public:
    /// Month 1 to 12, day 1 to 31, hour 0 to 23, minute and second 0 to 59, `fraction` in microseconds; the zone is a
    /// sign and an offset in minutes from UTC.
    DateTime(unsigned short year, unsigned char month, unsigned char day, unsigned char hour, unsigned char minute,
             unsigned char second, unsigned int fraction, char zoneSign, unsigned short zoneOffset);

    /// The date alone: "2017-01-01".
    String dateStampString() const;

private:
    unsigned short year_;
    unsigned char month_;
    unsigned char day_;
};

/// How much a message matters: 1 traces, 2 tells what is done, 3 warns, 4 is an error, 5 ends the work.
using LOGGER_PRIORITY = int;

/// One message under construction.
class LoggerStream
{
public:
    LoggerStream& operator+(const char* text);
    LoggerStream& operator+(const String& text);
    LoggerStream& operator+(int number);

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

/// A named logger. It lives as long as the process.
class Logger
{
public:
    /// The lowest priority that this logger takes.
    int priority = 1;

    /// The threshold in effect: the higher of the logger's own and the process's.
    LOGGER_PRIORITY resolvePriority() const;

    /// Writes the message as one line; false when it is not written, since its priority is below the threshold in
    /// effect, or it was before, or there were too many.
    bool log(LOGGER_PRIORITY priority, const LoggerStream& message);

    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

private:
    friend class LogFactory;
    explicit Logger(std::string name) : name_(std::move(name)) {}

    std::string name_;
};

/// Makes loggers and keeps the process-wide threshold.
class LogFactory
{
public:
    /// The lowest priority that the process logs, 1 to 5.
    static LOGGER_PRIORITY getPriority();

    /// Stores the logger of this name in `out`; the first call for a name makes it.
    static void createLogger(const char* name, Logger*& out);

    /// Sets what `getPriority` tells; for the host.
    static void setPriority(LOGGER_PRIORITY priority);
};

/// Traces the way into and out of a scope, at priority 1. Silent with a null logger.
class TraceLogger
{
public:
    TraceLogger(Logger* logger, const char* function, const char* file, int line);
    ~TraceLogger();
    TraceLogger(const TraceLogger&) = delete;
    TraceLogger& operator=(const TraceLogger&) = delete;

private:
    Logger* logger_;
    const char* function_;
};

} // namespace lum
