// SPDX-License-Identifier: MIT
/* The C interface of VlGeneralServices: late-bound access to its classes for programs in any language.
 *
 *     vlgs_object* files = NULL;
 *     vlgs_value argument = {0}, text = {0};
 *     int32_t member;
 *     if (vlgs_create("VlGeneralServices.Files", &files) == VLGS_DONE &&
 *         vlgs_id_of(files, "BuildConnectionStringFromPath", &member) == VLGS_DONE &&
 *         vlgs_text_new(path, strlen(path), &argument) == VLGS_DONE &&
 *         vlgs_invoke(files, member, VLGS_METHOD | VLGS_GET, &argument, 1, NULL, 0, &text) == VLGS_DONE)
 *         ...
 *     vlgs_clear(&text, 1);
 *     vlgs_clear(&argument, 1);
 *     vlgs_release(files);
 *
 * Functions that can fail return VLGS_DONE, or VLGS_RAISED and leave the error for vlgs_last_error. An
 * output is written only by a call that succeeds, without regard to what it held before. No C++ exception
 * ever leaves a function; exhausted memory is error 7.
 *
 * An object is used on the thread that made it; a call on another thread is answered with error -2147417842.
 * It is released there, too, or on any thread while the one that made it is in no call of this interface, as
 * when it has ended: who does that sees to it with a lock. Descriptions (classes, enumerations, names, help
 * texts) are constant, live as long as the library is loaded and may be read on any thread.
 *
 * Texts are UTF-8 with a length; they may contain NUL characters. A lone half of a UTF-16 surrogate pair
 * travels as the three bytes that UTF-8's scheme gives for its number, so that every text of the library
 * comes back as it went; other malformed bytes become U+FFFD. Names end with a NUL and ignore case.
 */
#ifndef VLGS_H
#define VLGS_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#ifdef __GNUC__
#pragma GCC visibility push(default)
#endif

/* NOLINTBEGIN(modernize-use-using): C has none */

enum { VLGS_DONE = 0, VLGS_RAISED = 1 };

/* "9.1002.0.23" */
const char* vlgs_version(void);

/* What the environment asks of the library and the library does not know (VLGS_LOCALE, VLGS_CODEPAGE), a line
 * for each variable; "" when there is nothing of the kind. Valid until the thread's next such call. */
const char* vlgs_unknown_settings(void);

/* ---- Errors --------------------------------------------------------------------------------------------*/

typedef struct vlgs_error {
    int32_t number;
    const char* source;
    size_t source_length;
    const char* description;
    size_t description_length;
} vlgs_error;

/* The error of the calling thread's last call that returned VLGS_RAISED; valid until its next such call. */
const vlgs_error* vlgs_last_error(void);

/* Sets that error: what a function of a vlgs_client does before it returns VLGS_RAISED. */
void vlgs_set_error(int32_t number, const char* source, size_t source_length, const char* description,
                    size_t description_length);

/* ---- Values --------------------------------------------------------------------------------------------*/

/* Type codes. An array's code is VLGS_ARRAY plus the code of its elements. */
enum {
    VLGS_EMPTY = 0,
    VLGS_NULL = 1,
    VLGS_INTEGER = 2,
    VLGS_LONG = 3,
    VLGS_SINGLE = 4,
    VLGS_DOUBLE = 5,
    VLGS_CURRENCY = 6,
    VLGS_DATE = 7,
    VLGS_TEXT = 8,
    VLGS_OBJECT = 9,
    VLGS_ERROR = 10,
    VLGS_BOOLEAN = 11,
    VLGS_VARIANT = 12,
    VLGS_DECIMAL = 14,
    VLGS_BYTE = 17,
    VLGS_RECORD = 36,
    VLGS_ARRAY = 0x2000
};

/* The status of a VLGS_ERROR value that stands for an argument left out. */
#define VLGS_MISSING ((int32_t)-2147352572)

typedef struct vlgs_object vlgs_object;

/* A value by its type code. All bits zero is Empty. Plain values are read and written directly. A text, an
 * object, a record and an array are owned by the value that holds them: such a value is made by one of the
 * functions below and given back by vlgs_clear, and is copied by vlgs_copy alone. */
typedef struct vlgs_value {
    uint16_t type;
    uint8_t scale; /* decimal: power of ten by which the whole number is divided, 0 to 28 */
    uint8_t sign;  /* decimal: 0x80 when negative */
    uint32_t high; /* decimal: the highest 32 of 96 bits */
    union {
        uint64_t low; /* decimal: the lower 64 bits; the first, so that {0} makes all bits zero */
        int16_t integer;
        int32_t number; /* Long; the status of an Error */
        uint8_t byte;
        uint8_t boolean; /* 0 or 1 */
        float single;
        double real;      /* Double; a Date as days since 30 December 1899 */
        int64_t currency; /* in units of 1/10000 */
        vlgs_object* object;
        void* shared; /* text, array or record; for the library alone */
    } as;
} vlgs_value;

/* Gives back what values own and makes them Empty. */
void vlgs_clear(vlgs_value* values, size_t count);
int vlgs_copy(const vlgs_value* value, vlgs_value* copy);

/* Converts in place as the run time does: 13 type mismatch, 6 overflow, 94 invalid use of Null. */
int vlgs_change_type(vlgs_value* value, uint16_t type);

int vlgs_text_new(const char* text, size_t length, vlgs_value* out);
/* The length in bytes of a text, which is copied to `buffer` when it fits into `capacity`; `length` is
 * written in either case. 13 for a value that is no text. */
int vlgs_text(const vlgs_value* value, char* buffer, size_t capacity, size_t* length);
/* The same in UTF-16, which texts are kept in: `text` is valid until the value changes. */
int vlgs_text_utf16_new(const uint16_t* text, size_t length, vlgs_value* out);
int vlgs_text_utf16(const vlgs_value* value, const uint16_t** text, size_t* length);

typedef struct vlgs_dimension {
    int32_t lower;
    int32_t count;
} vlgs_dimension;

/* A new array of zero, empty or null elements with 1 to 60 dimensions. */
int vlgs_array_new(uint16_t element, const vlgs_dimension* dimensions, size_t rank, vlgs_value* out);
/* The dimensions of an array, valid until the value changes; `rank` is 0 for an array that was never given
 * any, which is an array whose `as.shared` is null. The functions below raise 13 for other values. */
int vlgs_array_shape(const vlgs_value* array, const vlgs_dimension** dimensions, size_t* rank);
/* Copies `count` elements from an offset on out of, or into, an array; the first dimension varies fastest.
 * Elements that go in are converted to the array's type. 9 when the range is not inside the array. */
int vlgs_array_read(const vlgs_value* array, size_t offset, size_t count, vlgs_value* elements);
int vlgs_array_write(vlgs_value* array, size_t offset, size_t count, const vlgs_value* elements);

/* Arrays of bytes at once. `data` is valid until the value changes. */
int vlgs_bytes_new(const void* data, size_t size, vlgs_value* out);
int vlgs_bytes(const vlgs_value* array, const uint8_t** data, size_t* size);

/* Records: named fields in a fixed order. A new one has the given fields, the others are empty; 13 for a
 * record type or a field that does not exist. */
int vlgs_record_new(const char* name, const char* const* fields, const vlgs_value* values, size_t count,
                    vlgs_value* out);
/* The name of a record's type (NULL for no record) and the number of its fields; 13 for other values. */
int vlgs_record(const vlgs_value* record, const char** name, size_t* count);
/* A field by its place from 0; 9 when there is none. */
int vlgs_record_field(const vlgs_value* record, size_t index, const char** name, vlgs_value* value);

/* ---- Objects -------------------------------------------------------------------------------------------*/

/* Member numbers with a fixed meaning. */
enum { VLGS_DEFAULT_MEMBER = 0, VLGS_UNKNOWN_MEMBER = -1, VLGS_ENUMERATION_MEMBER = -4 };

/* Kinds of members and of calls; a call may ask for VLGS_METHOD | VLGS_GET. */
enum { VLGS_METHOD = 1, VLGS_GET = 2, VLGS_PUT = 4, VLGS_PUTREF = 8 };

/* A new object of a class: 429 when there is no such class or it is not creatable. The caller releases it. */
int vlgs_create(const char* name, vlgs_object** out);
void vlgs_retain(vlgs_object* object);
void vlgs_release(vlgs_object* object);

/* The number of a member, VLGS_UNKNOWN_MEMBER when there is none of that name. */
int vlgs_id_of(vlgs_object* object, const char* name, int32_t* member);

/* Calls a member. `arguments` are the positional ones in order (the value of a property write last), then
 * those given by name; `names` are the names of the last `named` arguments. By-reference parameters write
 * their new values into `arguments`, also when the call then fails; all of them stay the caller's to clear.
 * `result` may be NULL. Raises 438 no such member, 448 to 450 for arguments, 13 and 6 for values that
 * cannot be converted, and what the member itself raises. */
int vlgs_invoke(vlgs_object* object, int32_t member, uint32_t kind, vlgs_value* arguments, size_t count,
                const char* const* names, size_t named, vlgs_value* result);

/* An enumerator over an object's members, an object that the caller releases; 451 for an object that has
 * none. vlgs_next writes 1 to `more` and the next member to `item`, or 0 behind the last one. */
int vlgs_enumerate(vlgs_object* object, vlgs_object** enumerator);
int vlgs_next(vlgs_object* enumerator, vlgs_value* item, int* more);

/* Reads the same property of one member after the other: `visit` gets what it is, in order and in blocks, and
 * VLGS_RAISED from it ends the reading. The values are its own until it returns, and are cleared then. Names
 * and texts of a document's keys are read without making objects of the keys. Raises 451 for an object that
 * has no members, 91 for a member that is no object, and what reading the property raises. */
typedef int vlgs_visit(void* context, vlgs_value* values, size_t count);
int vlgs_read_each(vlgs_object* object, const char* property, vlgs_visit* visit, void* context);

/* A number that is another one once members were added or removed: as long as it stays the same, so do the
 * members of a document, a section or a collection, and their names. 0 for an object that does not tell. */
int vlgs_changes(vlgs_object* object, uint64_t* changes);

/* An object of the caller's own. Each function gets `context`; those that return a status return VLGS_RAISED
 * after vlgs_set_error. */
typedef struct vlgs_client {
    /* Writes the number of a member, VLGS_UNKNOWN_MEMBER for none. */
    int (*id_of)(void* context, const char* name, int32_t* member);
    /* Calls a member with positional arguments, which it may change in place; `result` is Empty before. */
    int (*invoke)(void* context, int32_t member, uint32_t kind, vlgs_value* arguments, size_t count,
                  vlgs_value* result);
    /* Tells that nobody holds the object any more. */
    void (*release)(void* context);
} vlgs_client;

/* A new object that forwards to `client`, which outlives it. */
int vlgs_object_new(const vlgs_client* client, void* context, vlgs_object** out);

/* Lets the members of `sink` be called, by the numbers of the events, when `source` raises events; 459 when
 * its class raises none. The source holds the sink until vlgs_disconnect with the number that this gives. */
int vlgs_connect(vlgs_object* source, vlgs_object* sink, int32_t* connection);
int vlgs_disconnect(vlgs_object* source, int32_t connection);

/* ---- Descriptions --------------------------------------------------------------------------------------*/

typedef struct vlgs_class vlgs_class;

/* The classes of the component: `index` counts from 0, NULL behind the last one. */
const vlgs_class* vlgs_class_at(size_t index);
/* By programmatic identifier or by bare name; NULL when there is none. */
const vlgs_class* vlgs_class_find(const char* name);
/* The class of an object; NULL for an object that is not of this library. */
const vlgs_class* vlgs_class_of(const vlgs_object* object);

typedef struct vlgs_class_facts {
    const char* library; /* "VlGeneralServices" */
    const char* name;    /* "Files" */
    const char* help;
    const char* event_interface; /* NULL where the class raises no events */
    int creatable;
    size_t member_count;
    size_t event_count;
} vlgs_class_facts;
void vlgs_class_describe(const vlgs_class* type, vlgs_class_facts* out);

typedef struct vlgs_type {
    uint16_t type; /* VLGS_EMPTY: none */
    uint8_t by_reference;
    uint8_t enumerator;
    const char* name; /* of the class, enumeration or record, else NULL */
} vlgs_type;

typedef struct vlgs_member {
    const char* name;
    const char* help;
    int32_t id;
    uint32_t kind; /* one of VLGS_METHOD, VLGS_GET, VLGS_PUT, VLGS_PUTREF */
    int hidden;
    size_t parameter_count;
    vlgs_type result;
    size_t error_count;
    const char* example;        /* what is typed after "vlgs call", NULL for none */
    const char* example_output; /* and what that prints */
} vlgs_member;

typedef struct vlgs_parameter {
    const char* name;
    const char* meaning;
    vlgs_type type;
    int optional;
    uint16_t default_type; /* what stands for it when left out: VLGS_LONG, VLGS_TEXT or VLGS_EMPTY (the
                               type's own zero) */
    int32_t default_number;
    const uint16_t* default_text; /* UTF-16 */
    size_t default_length;
} vlgs_parameter;

/* Members stand in interface order, those of the outgoing interface behind the others: `member` counts from
 * 0 to member_count + event_count - 1. Return 0 behind the last one. */
int vlgs_member_describe(const vlgs_class* type, size_t member, vlgs_member* out);
int vlgs_parameter_describe(const vlgs_class* type, size_t member, size_t parameter, vlgs_parameter* out);

/* A failure that a member raises on its own account: a code of the message catalogue or a number of the run
 * time, and the condition. */
typedef struct vlgs_error_condition {
    int32_t code;
    const char* when;
} vlgs_error_condition;
int vlgs_error_describe(const vlgs_class* type, size_t member, size_t error, vlgs_error_condition* out);

typedef struct vlgs_constant {
    const char* enumeration;
    const char* name;
    int32_t value;
} vlgs_constant;

/* The members of all enumerations: `index` counts from 0. Returns 0 behind the last one. */
int vlgs_constant_describe(size_t index, vlgs_constant* out);

/* NOLINTEND(modernize-use-using) */

#ifdef __GNUC__
#pragma GCC visibility pop
#endif
#ifdef __cplusplus
}
#endif

#endif
