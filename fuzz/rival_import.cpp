// SPDX-License-Identifier: Apache-2.0
// The readers of other launchers' data; the first byte chooses one. Any bytes give a layout, or an
// error.
#include <string_view>

#include "Import/BackupReader.h"
#include "Import/PathList.h"
#include "Import/RivalImport.h"
#include "InputFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vellory;
    static const fuzz::InputFile store("Data.store");
    const auto resolver = [](const std::string& path) -> std::optional<BundleID> {
        return path.size() % 2 == 0 ? std::optional("org.test.app") : std::nullopt;
    };
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0]) {
    case 'S':
        RivalImport::launchNext(store.holding(data + 1, size - 1), resolver);
        break;
    case 'P':
        RivalImport::pathList(bytes);
        break;
    case 'R':
        RivalImport::resolve(bytes, resolver);
        break;
    default:
        if (const auto layout = RivalImport::layoutInBackup(bytes, resolver);
            layout && layout->appCount() == 0) {
            std::abort(); // a backup without apps is an error
        }
    }
    return 0;
}
