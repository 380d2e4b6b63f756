// SPDX-License-Identifier: MIT
#include "Library.h"

#include <dlfcn.h>

namespace vlgs::python {

Library library{};

namespace {

struct Finder {
    void* handle;
    bool complete = true;

    template <class Function>
    void operator()(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(handle, name));
        complete = complete && function;
    }
};

} // namespace

const char* load(const char* path) {
    void* const handle = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        return dlerror();
    Library found{};
    Finder find{handle};
    find(found.version, "vlgs_version");
    find(found.unknownSettings, "vlgs_unknown_settings");
    find(found.lastError, "vlgs_last_error");
    find(found.setError, "vlgs_set_error");
    find(found.clear, "vlgs_clear");
    find(found.changeType, "vlgs_change_type");
    find(found.textNew, "vlgs_text_new");
    find(found.textUtf16New, "vlgs_text_utf16_new");
    find(found.textUtf16, "vlgs_text_utf16");
    find(found.arrayNew, "vlgs_array_new");
    find(found.arrayShape, "vlgs_array_shape");
    find(found.arrayRead, "vlgs_array_read");
    find(found.arrayWrite, "vlgs_array_write");
    find(found.bytesNew, "vlgs_bytes_new");
    find(found.bytes, "vlgs_bytes");
    find(found.recordNew, "vlgs_record_new");
    find(found.record, "vlgs_record");
    find(found.recordField, "vlgs_record_field");
    find(found.create, "vlgs_create");
    find(found.retain, "vlgs_retain");
    find(found.release, "vlgs_release");
    find(found.idOf, "vlgs_id_of");
    find(found.invoke, "vlgs_invoke");
    find(found.enumerate, "vlgs_enumerate");
    find(found.next, "vlgs_next");
    find(found.readEach, "vlgs_read_each");
    find(found.changes, "vlgs_changes");
    find(found.objectNew, "vlgs_object_new");
    find(found.connect, "vlgs_connect");
    find(found.disconnect, "vlgs_disconnect");
    find(found.classAt, "vlgs_class_at");
    find(found.classOf, "vlgs_class_of");
    find(found.classDescribe, "vlgs_class_describe");
    find(found.memberDescribe, "vlgs_member_describe");
    find(found.parameterDescribe, "vlgs_parameter_describe");
    find(found.errorDescribe, "vlgs_error_describe");
    find(found.constantDescribe, "vlgs_constant_describe");
    if (!find.complete)
        return "the library is of another version";
    library = found;
    return nullptr;
}

} // namespace vlgs::python
