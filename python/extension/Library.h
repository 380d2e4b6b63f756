// SPDX-License-Identifier: MIT
// The functions of the shared library, found when the module is told where that is: it stands beside the
// module in some installations, in the system's folders in others.
#pragma once

#include "capi/vlgs.h"

namespace vlgs::python {

struct Library {
    decltype(&vlgs_version) version;
    decltype(&vlgs_unknown_settings) unknownSettings;
    decltype(&vlgs_last_error) lastError;
    decltype(&vlgs_set_error) setError;
    decltype(&vlgs_clear) clear;
    decltype(&vlgs_change_type) changeType;
    decltype(&vlgs_text_new) textNew;
    decltype(&vlgs_text_utf16_new) textUtf16New;
    decltype(&vlgs_text_utf16) textUtf16;
    decltype(&vlgs_array_new) arrayNew;
    decltype(&vlgs_array_shape) arrayShape;
    decltype(&vlgs_array_read) arrayRead;
    decltype(&vlgs_array_write) arrayWrite;
    decltype(&vlgs_bytes_new) bytesNew;
    decltype(&vlgs_bytes) bytes;
    decltype(&vlgs_record_new) recordNew;
    decltype(&vlgs_record) record;
    decltype(&vlgs_record_field) recordField;
    decltype(&vlgs_create) create;
    decltype(&vlgs_retain) retain;
    decltype(&vlgs_release) release;
    decltype(&vlgs_id_of) idOf;
    decltype(&vlgs_invoke) invoke;
    decltype(&vlgs_enumerate) enumerate;
    decltype(&vlgs_next) next;
    decltype(&vlgs_read_each) readEach;
    decltype(&vlgs_changes) changes;
    decltype(&vlgs_object_new) objectNew;
    decltype(&vlgs_connect) connect;
    decltype(&vlgs_disconnect) disconnect;
    decltype(&vlgs_class_at) classAt;
    decltype(&vlgs_class_of) classOf;
    decltype(&vlgs_class_describe) classDescribe;
    decltype(&vlgs_member_describe) memberDescribe;
    decltype(&vlgs_parameter_describe) parameterDescribe;
    decltype(&vlgs_error_describe) errorDescribe;
    decltype(&vlgs_constant_describe) constantDescribe;
};

/// The library's functions; `load` fills them, and the module does nothing before that.
extern Library library;

/// Opens the shared library and finds its functions; null, or what went wrong.
const char* load(const char* path);

} // namespace vlgs::python
