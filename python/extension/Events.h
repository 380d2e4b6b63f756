// SPDX-License-Identifier: MIT
#pragma once

#include "Reference.h"

namespace vlgs::python {

/// Has the functions of a dictionary called by the numbers of the events that they stand under; the number of
/// the connection.
PyObject* connect(PyObject* source, PyObject* methods);

} // namespace vlgs::python
