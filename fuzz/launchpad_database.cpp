// SPDX-License-Identifier: Apache-2.0
// The reader of the former launcher's database: any bytes give a layout without empty pages, or an
// error.
#include "DatabaseFile.h"
#include "Import/LaunchpadImporter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vellory::fuzz::InputFile file("db");
    const auto layout = vellory::LaunchpadImporter::importLayout(file.holding(data, size));
    if (layout) {
        for (const auto& page : layout->pages) {
            if (page.empty()) {
                std::abort();
            }
        }
    }
    return 0;
}
