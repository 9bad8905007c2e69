// The common services: text, settings, localized texts, values, formatting and logging.
//
// None of these operations throws as far as its caller is concerned. Used from one thread only.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace lum
{

class CString;

/// The number that a text was made from, for programs that would otherwise have to read it back out of the text: the
/// code of an enumerated field, or a quantity.
class Number
{
public:
    enum class Kind : unsigned char {
        None,
        Code,  ///< the value of an enumerated field
        Whole, ///< a quantity that was given as an integer
        Real,  ///< a quantity that was given as a floating number
    };

    Number() = default;

    static Number code(unsigned value) { return {Kind::Code, value, nullptr}; }

    /// `unit` is the name of the unit's constant, valid for the process's life; null for a mere count.
    static Number whole(std::uint64_t value, const char* unit = nullptr) { return {Kind::Whole, value, unit}; }

    /// The value times 10 to the power of `tens` times 2 to the power of `twos`.
    static Number real(double value, const char* unit, int tens = 0, int twos = 0)
    {
        return {Kind::Real, std::bit_cast<std::uint64_t>(value), unit, tens, twos};
    }

    Kind kind() const { return kind_; }
    const char* unit() const { return unit_; }

    /// The code, or the whole quantity.
    std::uint64_t integer() const { return bits_; }

    /// The real quantity's value as it was given, and its powers.
    double given() const { return std::bit_cast<double>(bits_); }
    int tens() const { return tens_; }
    int twos() const { return twos_; }

private:
    Number(Kind kind, std::uint64_t bits, const char* unit, int tens = 0, int twos = 0)
        : bits_(bits), unit_(unit), kind_(kind), tens_(static_cast<signed char>(tens)),
          twos_(static_cast<signed char>(twos))
    {
    }

    std::uint64_t bits_ = 0;
    const char* unit_ = nullptr;
    Kind kind_ = Kind::None;
    signed char tens_ = 0;
    signed char twos_ = 0;
};

/// A text. UTF-8 by intent; whatever bytes it was made from are kept as they are.
///
/// Short texts are held inside. The bytes of a longer one never change, so its copies share them; those that lie in the
/// program or in a table in memory are not copied at all.
class String
{
public:
    String() = default;
    String(const char* text)
    {
        if (text != nullptr)
            hold(text, Source::Terminated);
    }
    explicit String(std::string_view text) { hold(text, Source::Any); }

    /// A NUL-terminated text that is part of the program.
    static String fixed(std::string_view text);

    // Moving is copying: both only share.
    String(const String&) = default;
    ~String() = default;
    String& operator=(const String&) = default;
    String& operator=(const char* text) { return *this = String(text); }

    String operator+(const String& other) const;
    String& operator+=(const String& other);

    /// Removes blanks, \t, \n, \v, \f and \r at both ends, in place.
    String& trim();

    /// Removes up to `count` bytes from the zero-based position on; a position behind the end removes nothing.
    void remove(unsigned pos, unsigned count);

    /// Bytes, the terminator not counted.
    unsigned size() const { return static_cast<unsigned>(size_); }

    /// The text in 8-bit form, as the look-ups of `Resource` take it.
    CString getLowerByteString() const;

    /// The bytes themselves, with a NUL behind them; valid while this object is neither changed nor gone.
    std::string_view bytes() const { return {outside_ != nullptr ? outside_ : inside_.data(), size_}; }

    friend bool operator==(const String& text, std::string_view bytes) { return text.bytes() == bytes; }

    /// The number that this text shows, if it was made from one. A text that was put together, cut or changed in any
    /// other way shows none.
    const Number& number() const { return number_; }
    String& show(const Number& number)
    {
        number_ = number;
        return *this;
    }

private:
    static constexpr std::size_t kInside = 39;
    enum class Source { Any, Terminated };

    void hold(std::string_view text, Source source)
    {
        if (text.size() > kInside) {
            holdLong(text, source);
            return;
        }
        size_ = text.copy(inside_.data(), kInside);
    }
    void holdLong(std::string_view text, Source source);

    std::array<char, kInside + 1> inside_{};
    const char* outside_ = nullptr; ///< the text where it is not inside
    std::size_t size_ = 0;
    std::shared_ptr<const void> owner_; ///< of the text outside; none for one in the program
    Number number_;
};

/// An 8-bit text made from a `String`.
class CString
{
public:
    explicit CString(const String& text) : text_(text) {}

    /// NUL-terminated, valid while this object lives.
    const char* c_str() const { return text_.bytes().data(); }

private:
    String text_;
};

inline CString String::getLowerByteString() const { return CString(*this); }

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
