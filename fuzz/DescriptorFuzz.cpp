// SPDX-License-Identifier: MIT
// Decimals of any content as object descriptors: nothing, or the one object that lives.
// Covers: packager/*
#include "packager/ObjectPackager.h"

#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vlgs;
    const auto packager = make<ObjectPackager>();
    const auto ended = packager->PackObject(make<ObjectPackager>());
    Decimal decimal = packager->PackObject(packager).decimal();
    for (std::size_t i = 0; i + 1 < size; i += 2) { // a place in the descriptor and the byte for it
        auto* part = data[i] % 3 == 0 ? reinterpret_cast<unsigned char*>(&decimal.high) + data[i] / 3 % 4
                                      : reinterpret_cast<unsigned char*>(&decimal.low) + data[i] / 3 % 8;
        *part = data[i + 1];
        const auto object = packager->UnpackObject(decimal);
        if (object && object != Ref<Object>(packager))
            std::abort();
        if (packager->RefCount(decimal) < 0 || packager->UnpackObject(ended))
            std::abort();
    }
    return 0;
}
