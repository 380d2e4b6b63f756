// SPDX-License-Identifier: MIT
// The same C++ calls through pybind11, without late binding: what PythonBench.py measures the Python module
// against.
#include "capi/vlgs.h"
#include "ini/INIFile.h"
#include "support/TestBed.h"

#include <pybind11/pybind11.h>

namespace {

using namespace vlgs;

std::u16string standard(const String& text) {
    return std::u16string(text.view());
}

struct Bed {
    Ref<test::TestBed> bed = make<test::TestBed>();
    std::int32_t number() const { return bed->Number(); }
    double weigh(std::int32_t number, const std::u16string& text, std::int32_t any, double real) const {
        return bed->Weigh(number, String(text), Variant(any), real);
    }
};

struct Document {
    Ref<INIFile> file = make<INIFile>();
    std::u16string fullPath() const { return standard(file->FullPath()); }
    void createKey(const std::u16string& section, const std::u16string& key,
                   const std::u16string& text) const {
        file->CreateKey(Variant(String(section)), String(key), String(text));
    }
    std::u16string keyValue(const std::u16string& section, const std::u16string& key) const {
        return standard(file->KeyValue(String(section), String(key)));
    }
};

} // namespace

PYBIND11_MODULE(vlgs_peer, module) {
    module.def("bed", [] { return reinterpret_cast<std::uintptr_t>(make<test::TestBed>().detach()); });
    pybind11::class_<Bed>(module, "Bed")
        .def(pybind11::init())
        .def_property_readonly("Number", &Bed::number)
        .def("Weigh", &Bed::weigh);
    pybind11::class_<Document>(module, "Document")
        .def(pybind11::init())
        .def_property_readonly("FullPath", &Document::fullPath)
        .def("CreateKey", &Document::createKey)
        .def("KeyValue", &Document::keyValue);
}
