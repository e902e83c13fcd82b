// Any bytes read as a property list, or are refused; what was read comes back the same after it was written.
#include "Fuzz.h"
#include "foundation/plist/PlistReader.h"
#include "foundation/plist/PlistWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string_view bytes = inputText(data, size);
    const Result<PlistValue> value = plist::read(bytes);
    if (!value) {
        expect(!value.error().message.empty(), "a refusal says why");
        return 0;
    }
    const std::string written = plist::write(value.value());
    const Result<PlistValue> again = plist::read(written);
    expect(static_cast<bool>(again), "what was written reads");
    expect(plist::write(again.value()) == written, "what was written and read is written the same");
    return 0;
}
