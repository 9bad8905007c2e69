// Taking values apart.
#include "told.h"

namespace zorpinventory::tell
{

using document::Number;

void forEachText(const document::Property& property, const std::function<void(const Told& told)>& use)
{
    const auto* number = property.number;
    struct Take
    {
        const Number* number;
        const std::function<void(const Told& told)>& use;

        void operator()(std::string_view text) const
        {
            if (number == nullptr || number->kind == Number::Kind::Codes)
                use({text, {}, {}, {}});
            else if (number->kind == Number::Kind::Code)
                use({text, {}, {}, number->value.digits});
            else
                use({text, number->value.digits, number->unit, {}});
        }
        void operator()(const document::Numeral& numeral) const { use({numeral.digits, numeral.digits, {}, {}}); }
        void operator()(bool flag) const { use({flag ? "true" : "false", {}, {}, {}}); }
        void operator()(const document::Texts& list) const
        {
            const bool coded = number != nullptr && number->codes.size() == list.size();
            for (std::size_t i = 0; i < list.size(); ++i)
                use({list[i], {}, {}, coded ? number->codes[i].digits : std::string_view()});
        }
        void operator()(const document::Measurement& measurement) const
        {
            use({measurement.text, measurement.value.digits, measurement.unit, {}});
        }
    };
    std::visit(Take{number, use}, property.value);
}

} // namespace zorpinventory::tell
