// SPDX-License-Identifier: MIT
// Property strings through the objects that scripts use: what they hand out they take back.
// Covers: viewprops/*
#include "Input.h"
#include "automation/Variant.h"
#include "locking/CorvaTools.h"

#include <cstdlib>
#include <vector>

using namespace vlgs;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto tools = make<CorvaTools>();
    fuzz::Input input(data, size);
    const auto choice = input.below(256);
    fuzz::succeeds([&] {
        const auto properties = tools->RetrieveViewProperties(Variant(String::fromUtf8(input.rest())));
        const auto& members = properties->classInfo()->members();
        for (std::size_t i = 0; i < 4; ++i) {
            std::vector<Variant> arguments(i % 3, Variant(static_cast<std::int32_t>(i)));
            fuzz::succeeds([&] {
                properties->invoke(members[(choice + i) % members.size()].id, InvokeKind::MethodOrGet,
                                   {arguments});
            });
        }
    });
    return 0;
}
