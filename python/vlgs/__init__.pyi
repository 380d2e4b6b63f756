# SPDX-License-Identifier: MIT
# Made by scripts/python_stubs.py from the descriptions of the classes; run it again instead of editing this file.
# Members answer to their names in any case; the names here are the ones that a checker knows.
import datetime
import decimal
import os
import uuid
from typing import Any, Dict, Iterable, Iterator, List, Literal, Mapping, Sequence, Tuple, Type, TypeVar, Union, overload

_T = TypeVar("_T", bound="Object")
_Text = Union[str, "os.PathLike[str]", uuid.UUID, ByRef]
_Date = Union[datetime.date, datetime.time, float, str, ByRef]
_Number = Union[float, decimal.Decimal, ByRef]
_Items = Union[Sequence[Any], range, "set[Any]", "frozenset[Any]", bytes, ByRef]

__version__: str

class ByRef:
    value: Any
    def __init__(self, value: Any = ...) -> None: ...

class Variant:
    code: int
    value: Any
    def __init__(self, code: int, value: Any = ...) -> None: ...

class Array(List[Any]):
    vartype: int
    @property
    def lower(self) -> Any: ...
    @property
    def upper(self) -> Any: ...
    @property
    def dimensions(self) -> int: ...
    def __init__(self, values: Iterable[Any] = ..., lower: Union[int, Tuple[int, ...]] = ..., vartype: int = ...) -> None: ...

class Record:
    def __init__(self, name: str, **fields: Any) -> None: ...
    def __getattr__(self, name: str) -> Any: ...
    def __setattr__(self, name: str, value: Any) -> None: ...

class _Singleton:
    def __bool__(self) -> Literal[False]: ...

Empty: _Singleton
Null: _Singleton
Missing: Any

class WithEvents:
    handler: Any
    def __init__(self, source: Object, handler: Any) -> None: ...
    def close(self) -> None: ...
    def __enter__(self) -> WithEvents: ...
    def __exit__(self, *raised: Any) -> None: ...

class Object:
    def __call__(self, *arguments: Any, **named: Any) -> Any: ...
    def __getitem__(self, index: Any) -> Any: ...
    def __setitem__(self, index: Any, value: Any) -> None: ...
    def __len__(self) -> int: ...
    def __iter__(self) -> Iterator[Any]: ...
    def __reversed__(self) -> Iterator[Any]: ...
class Error(Exception):
    number: int
    source: str
    description: str
    @property
    def code(self) -> int: ...
    def __init__(self, number: int, source: str = ..., description: str = ...) -> None: ...
class AccessDenied(Error, PermissionError): ...
class FileMissing(Error, FileNotFoundError): ...
class KeyFailure(Error, KeyError): ...
class NoSuchMember(Error, AttributeError): ...
class NoSuchPosition(Error, IndexError): ...
class NotACollection(Error, TypeError): ...
class NumberTooLarge(Error, OverflowError): ...
class OutOfMemory(Error, MemoryError): ...
class UnfitArgument(Error, TypeError): ...
class _Component(Object):
    @property
    def ClassDescription(self) -> str:
        """What the class is"""
        ...
    @property
    def ClassFilename(self) -> str:
        """The file name of the library"""
        ...
    @property
    def ClassID(self) -> int:
        """The number of the class's interface"""
        ...
    @property
    def ClassName(self) -> str:
        """The name of the class, with that of the library"""
        ...
    @property
    def ClassPath(self) -> str:
        """The folder of the library's file, with a final backslash"""
        ...
    @property
    def ClassVersion(self) -> str:
        """The version of the library"""
        ...
class Collection(_Component):
    """Members in order, found by position or by key"""
    @property
    def Count(self) -> int:
        """The number of members"""
        ...
    def Item(self, Index: Any) -> Any:
        """The member at a position or with a key; Empty when there is none

        Index: a position from 1, or a key in any case
        """
        ...
    def Remove(self, Index: Any) -> int:
        """Removes a member; answers 0 or the number of the error

        Index: a position from 1, or a key in any case
        """
        ...
    def Add(self, Item: Any, key: _Text = ..., Before: Any = ..., After: Any = ...) -> int:
        """Adds a member; answers 0 or the number of the error

        Item: any value or object
        key: a name for it; left out, the empty key, which only one member can have
        Before: the member before which the new one goes: its position from 1 or its key
        After: the member behind which the new one goes; not together with Before
        """
        ...
    def IsPresent(self, Index: Any) -> bool:
        """Whether there is a member at a position or with a key

        Index: a position from 1, or a key in any case
        """
        ...
    def NewEnum(self) -> Any:
        """An enumerator over the members in order"""
        ...
class DDE(_Component):
    """Links to other running programs (disabled)"""
    @property
    def Default(self) -> str:
        """The default link target, application and topic around "|"

        sTopic: application and topic around "|"
        """
        ...
    @Default.setter
    def Default(self, value: _Text) -> None: ...
    def OpenLink(self, sTopic: _Text = ...) -> None:
        """Opens a link

        sTopic: application and topic around "|"

        Raises 10000 when always: links are disabled.
        """
        ...
    def ExecuteCommand(self, sCommand: _Text) -> None:
        """Executes a command over the link

        sCommand: the command

        Raises 1001 when no link is open.
        """
        ...
    def GetData(self, sItem: _Text) -> str:
        """Returns the data of an item

        sItem: the name of the item

        Raises 1001 when no link is open.
        """
        ...
    def SendData(self, sItem: _Text, sData: _Text) -> Any:
        """Sends data for an item

        sItem: the name of the item
        sData: the data

        Raises 1001 when no link is open.
        """
        ...
    def CloseLink(self) -> None:
        """Closes the link

        Raises 1001 when no link is open.
        """
        ...
    @property
    def IsLinked(self) -> bool:
        """Whether a link is open"""
        ...
    @property
    def LinkTopic(self) -> str:
        """The topic used last"""
        ...
    @property
    def LinkItem(self) -> str:
        """The item used last"""
        ...
    @property
    def LinkCommand(self) -> str:
        """The command used last"""
        ...
class Files(_Component):
    """Paths, project files, link files and connection strings"""
    def TranslatePathToUNC(self, sPath: _Text) -> str:
        """The UNC form of a path on a mapped network drive

        sPath: a path; "C" and "C:" are completed in the caller's variable

        Raises 11529 when a path is empty or begins neither with "\\\\" nor with a drive.
        Raises 11526 when a drive is not there.
        Raises 11525 when the share of a drive cannot be told.

        $ vlgs call Files.TranslatePathToUNC '\\\\server\\share\\a.txt'
        \\\\server\\share\\a.txt
        """
        ...
    @property
    def CurPath(self) -> str:
        """The current folder of the process

        sPath: the folder to make the current one; one that is not there changes nothing
        """
        ...
    @CurPath.setter
    def CurPath(self, value: _Text) -> None: ...
    def Path(self, sValue: _Text) -> str:
        """The absolute form of an existing path, else an empty text

        sValue: the path
        """
        ...
    def TranslateFromRelativePath(self, sRelativePath: _Text, sBasePath: _Text, bUseUNCFormat: Union[bool, ByRef] = ...) -> str:
        """The existing path to which a relative one leads

        sRelativePath: a path without drive or share
        sBasePath: an existing folder
        bUseUNCFormat: whether a mapped network drive becomes its share

        Raises 11545 when the path is not relative.
        Raises 11532 when the base folder does not exist.
        Raises 11544 when there is no such file or folder.
        Raises 11529 when a path is empty or begins neither with "\\\\" nor with a drive.
        Raises 11526 when a drive is not there.
        Raises 11525 when the share of a drive cannot be told.
        """
        ...
    def TranslateFromRelativePathNoFileCheck(self, sRelativePath: _Text, sBasePath: _Text, bUseUNCFormat: Union[bool, ByRef] = ...) -> str:
        """The path to which a relative one leads, in an existing folder

        sRelativePath: a path without drive or share
        sBasePath: an existing folder
        bUseUNCFormat: whether a mapped network drive becomes its share

        Raises 11545 when the path is not relative.
        Raises 11532 when the base folder does not exist.
        Raises 11544 when the folder of the target does not exist.
        Raises 11529 when a path is empty or begins neither with "\\\\" nor with a drive.
        Raises 11526 when a drive is not there.
        Raises 11525 when the share of a drive cannot be told.
        """
        ...
    def IsValidRelativePath(self, sRelativePath: _Text, sBasePath: _Text) -> bool:
        """Whether a relative path leads to a file or folder

        sRelativePath: a path without drive or share
        sBasePath: an existing folder

        Raises 11545 when the path is not relative.
        Raises 11532 when the base folder does not exist.
        Raises 11544 when there is no such file or folder.
        Raises 11529 when a path is empty or begins neither with "\\\\" nor with a drive.
        Raises 11526 when a drive is not there.
        Raises 11525 when the share of a drive cannot be told.
        """
        ...
    def IsValidPath(self, sValue: _Text) -> bool:
        """Whether a file or folder exists

        sValue: the path
        """
        ...
    def IsUNCPathFormat(self, sValue: _Text) -> bool:
        """Whether a path begins with two backslashes

        sValue: the path
        """
        ...
    def IsStandardPathFormat(self, sValue: _Text, bIsUNCFormat: Union[bool, ByRef] = ...) -> bool:
        """Whether a path begins with a drive letter

        sValue: the path
        bIsUNCFormat: receives whether the path is in UNC form
        """
        ...
    def IsRelativePathFormat(self, sValue: _Text) -> bool:
        """Whether a path begins with neither drive nor server

        sValue: the path
        """
        ...
    def TranslateToRelativePath(self, sInputPath: _Text, sBasePath: _Text) -> str:
        """The relative path from a base folder to a path

        sInputPath: the path to reach, which need not exist
        sBasePath: the existing folder from which the way begins

        Raises 11532 when the base folder does not exist.
        Raises 11550 when the paths are on different volumes.
        Raises 11529 when a path is empty or begins neither with "\\\\" nor with a drive.
        Raises 11526 when a drive is not there.
        Raises 11525 when the share of a drive cannot be told.

        $ vlgs call Files.TranslateToRelativePath 'C:\\tmp\\a.txt' 'C:\\usr'
        ..\\tmp\\a.txt
        """
        ...
    def ExtractPathVolume(self, sPath: _Text, sRemainder: _Text = ..., bSkipPathValidation: Union[bool, ByRef] = ...) -> str:
        """The volume of a path

        sPath: the file's path
        sRemainder: receives what follows the volume
        bSkipPathValidation: whether the path need not exist

        Raises 11549 when the path does not exist.

        $ vlgs call Files.ExtractPathVolume '\\\\server\\share\\a\\b.txt' bSkipPathValidation=True
        \\\\server\\share\\
        """
        ...
    def IsSamePathVolume(self, sPath1: _Text, sPath2: _Text) -> bool:
        """Whether two paths are on one volume

        sPath1: an existing path
        sPath2: another existing path

        Raises 11549 when a path does not exist.
        """
        ...
    def ExtractPathAllLevels(self, sPath: _Text) -> Array:
        """All levels of a path

        sPath: a path of any form

        $ vlgs call Files.ExtractPathAllLevels 'C:\\Projects\\demo.VLS'
        C:
        Projects
        demo.VLS
        """
        ...
    def ExtractPathDirLevels(self, sPath: _Text) -> Array:
        """The levels behind the volume

        sPath: a path of any form

        $ vlgs call Files.ExtractPathDirLevels 'C:\\Projects\\demo.VLS'
        Projects
        demo.VLS
        """
        ...
    def BuildDirBackupPrefix(self, lNumber: Union[int, ByRef]) -> str:
        """"..\\" a number of times

        lNumber: how many levels up; below 1 gives an empty text

        $ vlgs call Files.BuildDirBackupPrefix 2
        ..\\..\\
        """
        ...
    def BuildPath(self, vArray: Any, lStart: Union[int, ByRef] = ..., lStop: Union[int, ByRef] = ...) -> str:
        """Joins the elements of an array with backslashes

        vArray: an array of levels with one dimension
        lStart: the first index; -1 for the array's own
        lStop: the last index; -1 for the array's own

        Raises 9 when an index lies outside the array, or the array has not one dimension.
        """
        ...
    @property
    def IsDirectoryReadOnly(self) -> bool:
        """Whether the last GetReadWriteFile met a file that it cannot write"""
        ...
    def CheckVLSFilePath(self, sPath: _Text, bNoErrorRaise: Union[bool, ByRef] = ...) -> str:
        """The project file that a path means

        sPath: what the user typed, with or without extension
        bNoErrorRaise: whether a path without a file is returned trimmed

        Raises 11502 when no project file is found.
        """
        ...
    def CreateINIFile(self, sPath: _Text, eINIFileType: Union[int, ByRef] = ...) -> INIFile:
        """A new document in memory

        sPath: the path to which the document is bound; nothing is written
        eINIFileType: the kind; VLS and VLL set the path's extension
        """
        ...
    def RetrieveINIFile(self, sPath: _Text) -> INIFile:
        """Reads a settings file

        sPath: the file's path

        Raises 11513 when the file cannot be read.
        """
        ...
    def RetrieveVLLFile(self, sPath: _Text) -> INIFile:
        """Reads a database link file

        sPath: the file's path

        Raises 11513 when the file cannot be read.
        """
        ...
    def RetrieveVLSFile(self, sPath: _Text) -> INIFile:
        """Reads a project information file

        sPath: the project file's path, with or without extension

        Raises 11502 when no project file is found.
        Raises 11503 when the file is not accessible.
        Raises 11513 when the file cannot be read.
        """
        ...
    def GetVLLFileFullNameForVLS(self, sPath: _Text) -> str:
        """The path of the link file beside a project file

        sPath: the project file's path
        """
        ...
    def RetrieveVLLFileForVLS(self, sPath: _Text) -> INIFile:
        """Reads the link file beside a project file

        sPath: the project file's path
        """
        ...
    def Is40VLSFile(self, sPath: _Text) -> bool:
        """Whether a file is there and accessible

        sPath: the file's path
        """
        ...
    def AdjustSystemDBPath(self, sFullPath: _Text) -> str:
        """A path of a system database that the database engine can use

        sFullPath: the path of the system database

        Raises 53 when the file is not there.
        Raises 70 when its attributes cannot be read or the copy cannot be made.
        """
        ...
    def GetReadWriteFile(self, sPath: _Text, bUsedTempFile: Union[bool, ByRef]) -> str:
        """A path of a file, or of a copy, that can be written

        sPath: the file's path
        bUsedTempFile: receives whether the path is that of a copy, which then belongs to the caller
        """
        ...
    def BuildConnectionString(self, oINIFile: Union[INIFile, ByRef, None], sSchemaToken: _Text = ..., sUID: _Text = ..., sPwd: _Text = ..., bEncrypted: Union[bool, ByRef] = ..., lSequenceKey: Union[int, ByRef] = ...) -> str:
        """The connection string of a document's database

        oINIFile: a project or link document; an empty text for none
        sSchemaToken: the schema to name in the string; left out when empty
        sUID: the account; the built-in one when empty
        sPwd: the account's password
        bEncrypted: whether the password is scrambled
        lSequenceKey: a sequence key to add; none when 0

        Raises 11504 when the document is neither a project nor a link file.
        Raises 11558 when it has no section ODBC.
        """
        ...
    def BuildConnectionStringFromPath(self, sPath: _Text, sSchemaToken: _Text = ..., sUID: _Text = ..., sPwd: _Text = ..., bEncrypted: Union[bool, ByRef] = ..., lSequenceKey: Union[int, ByRef] = ...) -> str:
        """The connection string of a project's database

        sPath: the path of a project or link file; without a file the result is empty
        sSchemaToken: the schema to name in the string; left out when empty
        sUID: the account; the built-in one when empty
        sPwd: the account's password
        bEncrypted: whether the password is scrambled
        lSequenceKey: a sequence key to add; none when 0

        Raises 11558 when the file has no section ODBC.
        Raises 11502 when no project file is found.
        Raises 11503 when the file is not accessible.
        Raises 11513 when the file cannot be read.
        """
        ...
class General(_Component):
    """Lists, arrays, dictionaries and HTML texts"""
    def VariantToCSV(self, vKeys: Any, lStart: Union[int, ByRef] = ..., lEnd: Union[int, ByRef] = ...) -> str:
        """Returns the a comma-delimited string containing the members of each element of a Variant array.

        vKeys: an array with one or two dimensions
        lStart: the first index; the array's own where it does not stand
        lEnd: the last index; the array's own where it does not stand
        """
        ...
    def CSVToVariant(self, sKeys: _Text, sDelimiter: _Text = ..., lStart: Union[int, ByRef] = ..., lEnd: Union[int, ByRef] = ..., lChunkSize: Union[int, ByRef] = ...) -> Any:
        """Returns a Variant array containing the members of a comma-delimited string. Blank-spaces are set to zero. Output is reverse of input.

        sKeys: whole numbers between delimiters
        sDelimiter: its first character separates the fields
        lStart: without effect
        lEnd: without effect
        lChunkSize: by how many fields the room for the result grows

        Raises 9 when a field without a digit at its end lies beyond the room made so far.
        Raises 6 when a number is beyond 32 bits.

        $ vlgs call General.CSVToVariant 1,2,3
        3
        2
        1
        """
        ...
    def CollectionToCSV(self, colKeys: Any, lStart: Union[int, ByRef] = ..., lEnd: Union[int, ByRef] = ...) -> str:
        """Returns the a comma-delimited string conataining the members of each element of a VBA.Collection object.

        colKeys: any object with Count and Item
        lStart: the first index; the array's own where it does not stand
        lEnd: the last index; the array's own where it does not stand
        """
        ...
    def ParseDelimitedString(self, sData: _Text, sDelimiter: _Text) -> Collection:
        """Returns the items of a delimited string, in upper case, as an ordered collection.

        sData: the text, which loses its outer blanks
        sDelimiter: the one character between the items
        """
        ...
    def CopyVariantArrayToDictionary(self, vSourceArray: Any, oDestinationDictionary: Any = ...) -> Any:
        """Copies the contents of a Variant array (up to two dimensions) to a dictionary.
        Keys are the texts of the elements.
        Duplicates are not added.

        vSourceArray: an array with one or two dimensions
        oDestinationDictionary: the dictionary to fill; receives a new one when it is no object
        """
        ...
    def CopyDictionaryToVariantArray(self, oSourceDictionary: Any, vDestinationArray: Any = ...) -> Any:
        """Copies the contents of a Dictionary to a Variant array (up to two dimensions) .
        Duplicates are added.
        Only the last dimension of the array is copied.

        oSourceDictionary: a dictionary, or any object with Items
        vDestinationArray: the array that grows; becomes one when it is none
        """
        ...
    def GetArrayUpperDimension(self, vVariant: Any, iLowerDimensionLBound: Union[int, ByRef] = ...) -> int:
        """Determines the uppermost dimension of an array.
        Optionally returns the lower-bound of the first dimension.

        vVariant: any value
        iLowerDimensionLBound: receives the lower bound of the first dimension
        """
        ...
    def GetArrayDimensions(self, vArray: Any) -> int:
        """Returns the number of dimensions in an array

        vArray: the array
        """
        ...
    def GetArrayElemCount(self, vArray: Any, lDimension: Union[int, ByRef] = ...) -> int:
        """Returns the number of elements in the Nth dimension of an array

        vArray: the array
        lDimension: the dimension, from 1
        """
        ...
    def GetArrayElemIndexFromPosition(self, vArray: Any, lPosition: Union[int, ByRef], lDimension: Union[int, ByRef] = ...) -> int:
        """Returns the index for a one-base position in a one-based or zero-based array

        vArray: the array
        lPosition: a position from 1
        lDimension: the dimension, from 1
        """
        ...
    def IsSameDataType(self, vValue: Any, vDataTypes: _Items) -> bool:
        """Always True: no value is refused, whatever the data types listed.

        vValue: any value
        vDataTypes: an array of type codes
        """
        ...
    def HTMLtoText(self, sSourceHTMLText: _Text, bRemoveScriptOnly: Any = ...) -> str:
        """Returns the plain text of an HTML text, or the HTML text without its scripts.

        sSourceHTMLText: the HTML text
        bRemoveScriptOnly: whether only the scripts are removed
        """
        ...
class GUID(_Component):
    """Globally unique identifiers"""
    def GenerateGUID(self) -> str:
        """Returns a new GUID as text"""
        ...
    def IsEqualGUID(self, sGUID1: _Text, sGUID2: _Text) -> bool:
        """Whether two texts are the same GUID

        sGUID1: an identifier, with or without braces as GenerateGUID writes it
        sGUID2: the other one

        Raises 4000 when a text is no identifier.
        """
        ...
    def GUIDFromProgID(self, sProgID: _Text) -> str:
        """The GUID of the class registered under a ProgID

        sProgID: a programmatic identifier, as "VlGeneralServices.Files"

        Raises 4001 when no class is registered under the name.

        $ vlgs call GUID.GUIDFromProgID VlGeneralServices.Files
        {4A603093-7650-4169-B9E0-C2BFB2946409}
        """
        ...
    def ProgIDFromGUID(self, sGUID: _Text) -> str:
        """The ProgID of the class registered under a GUID

        sGUID: the identifier of a class

        Raises 4000 when the text is no identifier.
        Raises 4003 when the class is unknown or has no name.

        $ vlgs call GUID.ProgIDFromGUID {4A603093-7650-4169-B9E0-C2BFB2946409}
        VlGeneralServices.Files
        """
        ...
class INIFile(_Component):
    """An INI document of sections and keys, bound to a file"""
    def __contains__(self, name: str) -> bool: ...
    def __getitem__(self, index: Any) -> Property: ...
    def __setitem__(self, name: str, keys: Mapping[str, Any]) -> None: ...
    def __delitem__(self, name: str) -> None: ...
    def __iter__(self) -> Iterator[Property]: ...
    def get(self, name: str, default: Any = ...) -> Any: ...
    def keys(self) -> List[str]: ...
    def values(self) -> List[Property]: ...
    def items(self) -> List[Tuple[str, Property]]: ...
    def __enter__(self: _T) -> _T: ...
    def __exit__(self, *raised: Any) -> None: ...
    @property
    def FileType(self) -> int:
        """The kind of the file"""
        ...
    @property
    def FileTypeName(self) -> str:
        """The kind of the file in words"""
        ...
    @property
    def Filename(self) -> str:
        """The file's name without its folder"""
        ...
    @property
    def FileDirectory(self) -> str:
        """The file's folder"""
        ...
    @property
    def FullPath(self) -> str:
        """The file's folder and name"""
        ...
    @property
    def Sections(self) -> Collection:
        """The sections in order"""
        ...
    def Section(self, vSection: Any) -> Property:
        """A section by name or position

        vSection: a section, by its name in any case or its position from 1
        """
        ...
    def key(self, vSection: Any, vKey: Any) -> Property:
        """A key of a section by name or position

        vSection: a section, by its name in any case or its position from 1
        vKey: a key, by its name in any case or its position from 1
        """
        ...
    def KeyValue(self, sSection: _Text, sKey: _Text) -> str:
        """The text of a key

        sSection: the section's name
        sKey: the key's name
        """
        ...
    def CreateSection(self, sSectionName: _Text, Before: Any = ..., After: Any = ...) -> Property:
        """Finds or creates a section

        sSectionName: the name; a section that is there is returned
        Before: the member before which the new one goes: its position from 1 or its key
        After: the member behind which the new one goes; not together with Before

        Raises 11508 when the name is empty.
        Raises 5 when Before or After names no section, or both are given.
        Raises 13 when Before or After is neither a number nor a text.
        """
        ...
    def CreateKey(self, vSection: Any, sKeyName: _Text, sKeyValue: _Text, Before: Any = ..., After: Any = ...) -> Property:
        """Creates a key or changes its text

        vSection: the section, which is created when there is none of that name
        sKeyName: the name; the text of a key that is there changes
        sKeyValue: the key's text
        Before: the member before which the new one goes: its position from 1 or its key
        After: the member behind which the new one goes; not together with Before

        Raises 11510 when the name is empty.
        """
        ...
    def Save(self, sSaveAs: _Text = ...) -> bool:
        """Writes the document to its file or to another one. What a line cannot tell is not read back: line ends in names and values, blanks around names, = in a key's name, ] in a section's

        sSaveAs: the path to write to and to be bound to; the document's own when empty

        Raises 11512 when the file cannot be written, the code page lacks a character (the description names it), or the document was read from this very file, which has bytes that are no text.
        """
        ...
    def Clone(self, sNewFilename: _Text) -> INIFile:
        """A document with the same content and another path

        sNewFilename: the path to which the new document is bound
        """
        ...
    def Clear(self) -> None:
        """Lets go of all sections"""
        ...
    def GetStream(self, bUseCRLF: Union[bool, ByRef] = ...) -> Any:
        """The document as one text

        bUseCRLF: whether each line ends in CR LF
        """
        ...
    def GetStream2(self, eStreamType: Union[int, ByRef] = ..., sDelimiter: _Text = ...) -> Any:
        """The document in a form of streams

        eStreamType: 1 bytes, 2 an array of texts, 3 one text
        sDelimiter: what stands between lines; CR LF when empty

        Raises 11517 when the text cannot be made.
        """
        ...
    def PutStream(self, vData: Any) -> None:
        """Reads lines that end in CR LF into the document

        vData: a text, or an array of texts, whose lines end in CR LF; a text with LF alone is one line here: PutStream2 takes it with LF as the delimiter

        Raises 11513 when the file cannot be read.
        """
        ...
    def PutStream2(self, vData: Any, eStreamType: Union[int, ByRef] = ..., sDelimiter: _Text = ..., bCompact: Union[bool, ByRef] = ...) -> None:
        """Reads lines into the document

        vData: a text or an array of texts
        eStreamType: without effect
        sDelimiter: what stands between lines; CR LF when empty
        bCompact: whether the text is in the system's code page

        Raises 11513 when the file cannot be read.
        """
        ...
    @property
    def DelayedDelete(self) -> bool:
        """Whether the file is deleted as the document ends

        bDelete: whether the document deletes its file as it ends
        """
        ...
    @DelayedDelete.setter
    def DelayedDelete(self, value: Union[bool, ByRef]) -> None: ...
    def Delete(self) -> bool:
        """Deletes the file"""
        ...
    def DeleteSection(self, vSection: Any) -> bool:
        """Removes a section

        vSection: a section, by its name in any case or its position from 1
        """
        ...
    def DeleteKey(self, vSection: _Text, vKey: Any) -> bool:
        """Removes a key of a section

        vSection: the section's name
        vKey: a key, by its name in any case or its position from 1
        """
        ...
    def KeyCount(self, vSection: Any) -> int:
        """Number of keys of a section

        vSection: a section, by its name in any case or its position from 1
        """
        ...
    @property
    def Count(self) -> int:
        """Number of sections

        Raises 91 when the document has no collection of sections, as after Clear.
        """
        ...
    @property
    def SectionCount(self) -> int:
        """Number of sections

        Raises 91 when the document has no collection of sections, as after Clear.
        """
        ...
    @property
    def TotalKeyCount(self) -> int:
        """Number of keys of all sections"""
        ...
    @property
    def Locked(self) -> bool:
        """Whether the file is held open against writers

        bLocked: True holds the file, False lets it go
        """
        ...
    @Locked.setter
    def Locked(self, value: Union[bool, ByRef]) -> None: ...
class Property(_Component):
    """A named value or object"""
    def texts(self) -> Dict[str, str]: ...
    def __contains__(self, name: str) -> bool: ...
    def __delitem__(self, name: str) -> None: ...
    def __iter__(self) -> Iterator[Property]: ...
    def get(self, name: str, default: Any = ...) -> Any: ...
    def keys(self) -> List[str]: ...
    def values(self) -> List[Property]: ...
    def items(self) -> List[Tuple[str, Property]]: ...
    @property
    def Name(self) -> str:
        """The name of the property"""
        ...
    @property
    def Value(self) -> Any:
        """The value of the property, or the object that it holds"""
        ...
class RegUtil(_Component):
    """A navigator over the registry"""
    def SetCurrHive(self, eHive: Union[int, ByRef]) -> bool:
        """Sets the current hive

        eHive: the hive
        """
        ...
    @property
    def CurrHive(self) -> int:
        """The current hive"""
        ...
    def SetCurrPath(self, sKeyPath: _Text) -> bool:
        """Moves to a key of the hive

        sKeyPath: the path below the hive; an empty text for the hive itself
        """
        ...
    def SetCurrPathWithAccess(self, sKeyPath: _Text, eKeyAccess: Union[int, ByRef]) -> bool:
        """Moves to a key of the hive that allows some access

        sKeyPath: the path below the hive; an empty text for the hive itself
        eKeyAccess: what the key must allow
        """
        ...
    def DropToSubKey(self, sSubKey: _Text) -> bool:
        """Moves to a key below the current one

        sSubKey: the name of a key below the current one
        """
        ...
    def RiseToParentKey(self) -> bool:
        """Moves to the key above the current one"""
        ...
    @property
    def CurrPath(self) -> str:
        """The path of the current key below its hive"""
        ...
    def GetValue(self, oRegValue: Union[RegValue, ByRef, None]) -> bool:
        """Reads a value by its name

        oRegValue: the record of the value, found by its name
        """
        ...
    @property
    def LastErrorValue(self) -> int:
        """The reason of the last failure"""
        ...
    def AddOrUpdateValue(self, oRegValue: Union[RegValue, ByRef, None]) -> bool:
        """Stores a value

        oRegValue: the record of the value, found by its name
        """
        ...
    def EnumValues(self, cValues: Any) -> bool:
        """Adds the values of the current key to a collection

        cValues: a collection, to which a RegValue for each value is added
        """
        ...
    def DeleteValue(self, oRegValue: Union[RegValue, ByRef, None]) -> bool:
        """Deletes a value

        oRegValue: the record of the value, found by its name
        """
        ...
    def EnumKeys(self, cKeys: Any) -> bool:
        """Adds the names of the subkeys to a collection

        cKeys: a collection, to which the names are added
        """
        ...
    def AddKey(self, sKeyName: _Text, bSetPathToNewKey: Union[bool, ByRef] = ...) -> bool:
        """Makes a key below the current one

        sKeyName: the key's name below the current one
        bSetPathToNewKey: whether the new key becomes the current one
        """
        ...
    def DeleteKey(self, sKeyName: _Text) -> bool:
        """Deletes a key below the current one

        sKeyName: the key's name below the current one
        """
        ...
    def RenameValue(self, sOldName: _Text, sNewName: _Text) -> bool:
        """Gives a value another name

        sOldName: the value's name
        sNewName: its new name; a value of that name is replaced
        """
        ...
    def EnumPath(self, cPathKeys: Any) -> bool:
        """Adds the names of the current path to a collection

        cPathKeys: a collection, to which the names are added
        """
        ...
class RegValue(_Component):
    """A value of the registry: its name, type and data"""
    @property
    def DataType(self) -> int:
        """The type of the data

        eNewType: the type
        """
        ...
    @DataType.setter
    def DataType(self, value: Union[int, ByRef]) -> None: ...
    @property
    def ValueName(self) -> str:
        """The name of the value

        sNewName: the name; an empty one is the key's default value
        """
        ...
    @ValueName.setter
    def ValueName(self, value: _Text) -> None: ...
    @property
    def Value(self) -> Any:
        """The data

        vNewValue: the data
        """
        ...
    @Value.setter
    def Value(self, value: Any) -> None: ...
class CorvaTools(_Component):
    """Locks of projects and documents, a hash of texts, and view properties"""
    def IsDocLocked(self, sPath: _Text, sGUID: _Text) -> bool:
        """Whether a document of a project is locked

        sPath: a path inside the project's folder, normally the project file
        sGUID: the document's identifier, in any case

        Raises 70 when the folder cannot be read.

        $ vlgs call CorvaTools.IsDocLocked /tmp/project.VLS '{11111111-5B0B-4B52-9E0B-2C1F0C5A7EAF}'
        False
        """
        ...
    def Hash(self, sValue: _Text) -> int:
        """A hash of a text, 0 to 16383

        sValue: the text, which stays as it is

        $ vlgs call CorvaTools.Hash AB
        4091
        """
        ...
    def RetrieveViewProperties(self, sProperties: Any) -> ViewProperties:
        """The objects of a view property string

        sProperties: a view property string

        Raises 11519 when the text is no view property string.
        Raises 11520 when a quote is not closed.
        """
        ...
    def InitiateLock(self, sPath: _Text, eLockType: Union[int, ByRef] = ..., sMyLockFilename: _Text = ...) -> INIFile:
        """Takes a lock of a project, which lasts until the result is released

        sPath: a path inside the project's folder, normally the project file
        eLockType: the kind of lock, with eUserLock_FallbackToReadOnly for a read-only one in place of a conflict
        sMyLockFilename: the name of the lock file that the caller has already; receives that of the new one

        Raises 11515 when an exclusive lock is wanted and somebody has a read-write or exclusive one.
        Raises 11516 when a read-write lock is wanted and somebody has an exclusive one.
        Raises 11523 when there is no such folder, or the lock file cannot be written or held.
        Raises 11524 when the kind is none of the three.

        $ vlgs call CorvaTools.InitiateLock /tmp/project.VLS .KeyValue User Access
        ReadWrite
        """
        ...
    def InitiateLock2(self, sPath: _Text, eLockType: Union[int, ByRef] = ..., sMyLockFilename: _Text = ..., eGranted: Union[int, ByRef] = ...) -> INIFile:
        """Takes a lock of a project and tells which kind was granted

        sPath: a path inside the project's folder, normally the project file
        eLockType: the kind of lock, with eUserLock_FallbackToReadOnly for a read-only one in place of a conflict
        sMyLockFilename: the name of the lock file that the caller has already; receives that of the new one
        eGranted: receives the kind that was granted

        Raises 11515 when an exclusive lock is wanted and somebody has a read-write or exclusive one.
        Raises 11516 when a read-write lock is wanted and somebody has an exclusive one.
        Raises 11523 when there is no such folder, or the lock file cannot be written or held.
        Raises 11524 when the kind is none of the three.
        """
        ...
    def InitiateLock3(self, sPath: _Text, eLockType: Union[int, ByRef] = ..., sMyLockFilename: _Text = ..., eGranted: Union[int, ByRef] = ..., sSessionID: _Text = ...) -> INIFile:
        """Takes a lock of a project for a session of the caller's

        sPath: a path inside the project's folder, normally the project file
        eLockType: the kind of lock, with eUserLock_FallbackToReadOnly for a read-only one in place of a conflict
        sMyLockFilename: the name of the lock file that the caller has already; receives that of the new one
        eGranted: receives the kind that was granted
        sSessionID: the caller's session, without it a new one

        Raises 11515 when an exclusive lock is wanted and somebody has a read-write or exclusive one.
        Raises 11516 when a read-write lock is wanted and somebody has an exclusive one.
        Raises 11523 when there is no such folder, or the lock file cannot be written or held.
        Raises 11524 when the kind is none of the three.

        $ vlgs call CorvaTools.InitiateLock3 /tmp/project.VLS eUserLock_ReadOnly sSessionID=night .KeyValue User SessionID
        night
        """
        ...
    def InitiateDocLock(self, sPath: _Text, sGUID: _Text, eLockType: Union[int, ByRef] = ..., sMyLockFilename: _Text = ..., eGranted: Union[int, ByRef] = ..., sSessionID: _Text = ...) -> INIFile:
        """Takes a lock of a document of a project

        sPath: a path inside the project's folder, normally the project file
        sGUID: the document's identifier
        eLockType: the kind of lock, with eUserLock_FallbackToReadOnly for a read-only one in place of a conflict
        sMyLockFilename: the name of the lock file that the caller has already; receives that of the new one
        eGranted: receives the kind that was granted
        sSessionID: the caller's session, without it a new one

        Raises 11556 when somebody else has a read-write or exclusive lock of the document.
        Raises 11523 when there is no such folder, or the lock file cannot be written or held.
        Raises 11524 when the kind is none of the three.
        """
        ...
    def FindExclusiveLock(self, sPath: _Text, sMyLockFilename: _Text = ...) -> INIFile:
        """The exclusive lock that another holds on a project, or no object

        sPath: a path inside the project's folder, normally the project file
        sMyLockFilename: the name of the caller's own lock file, which does not count

        Raises 11523 when there is no such folder.
        """
        ...
class Buffer(_Component):
    """Gathers texts, each followed by a delimiter"""
    @property
    def ChunkSize(self) -> int:
        """Least number of bytes by which the store grows

        lChunkSize: a number of bytes; 200 for a number below 1
        """
        ...
    @ChunkSize.setter
    def ChunkSize(self, value: Union[int, ByRef]) -> None: ...
    @property
    def Compact(self) -> bool:
        """Whether texts are stored in the system's code page

        bCompact: whether bytes of the code page are stored in place of 16-bit characters
        """
        ...
    @Compact.setter
    def Compact(self, value: Union[bool, ByRef]) -> None: ...
    def Clear(self) -> None:
        """Empties the store and sets all properties back"""
        ...
    @property
    def Delimiter(self) -> str:
        """What follows every stored text

        sDelimiter: what follows each text that is stored from now on
        """
        ...
    @Delimiter.setter
    def Delimiter(self, value: _Text) -> None: ...
    def PutData(self, vData: Any = ..., sDelimiter: _Text = ...) -> None:
        """Stores a text or the elements of an array

        vData: a text, a value that converts to one, or an array of such
        sDelimiter: what follows the text; the property when empty

        Raises 13 when an element is an object.
        Raises 9 when an array has not one dimension.
        Raises 6 when the store would pass 2,147,483,647 bytes.
        """
        ...
    def GetData(self, eStreamType: Union[int, ByRef], sDelimiter: _Text = ...) -> Any:
        """Gives what is stored, in one of three forms

        eStreamType: 1 bytes, 2 an array of texts, 3 one text; Empty for another
        sDelimiter: what the texts are split at; the property when empty
        """
        ...
class Restricted(_Component):
    """The frame of the closed security services"""
class ViewProperties(_Component):
    """The properties of a view"""
    def Clear(self) -> None:
        """Empties the dictionary and lets it go"""
        ...
    @property
    def Dictionary(self) -> Any:
        """The properties by name"""
        ...
    @property
    def PropertyString(self) -> str:
        """The properties as text

        sValue: a view property string, in place of all that was there

        Raises 11519 when reading: the dictionary holds what cannot be written.
        Raises 11522 when writing: the text is no view property string; nothing changes.
        """
        ...
    @PropertyString.setter
    def PropertyString(self, value: _Text) -> None: ...
class ViewProperty(_Component):
    """A typed value of a view"""
    def Clear(self) -> None:
        """Lets value, type and key side go"""
        ...
    @property
    def DataType(self) -> str:
        """The type letter of the value

        DataType: b, i, s, y, p, c or d
        """
        ...
    @DataType.setter
    def DataType(self, value: _Text) -> None: ...
    @property
    def Value(self) -> Any:
        """The value, plain or an object

        vValue: a plain value or an object
        """
        ...
    @Value.setter
    def Value(self, value: Any) -> None: ...
    @property
    def KeySideViewProperty(self) -> ViewProperty:
        """The key of a dictionary's pair, on its value side

        KeySideViewProperty: the property that is the pair's key
        """
        ...
    @KeySideViewProperty.setter
    def KeySideViewProperty(self, value: Union[ViewProperty, ByRef, None]) -> None: ...
class ObjectPackager(_Component):
    """References to objects packed into plain values"""
    def PackObject(self, oObject: Any, lObjPtr: Union[int, ByRef] = ...) -> Any:
        """Returns a descriptor of an object that holds no reference to it

        oObject: the object; the Decimal 0 for none
        lObjPtr: receives the object's number
        """
        ...
    def UnpackObject(self, vDescriptor: Any) -> Any:
        """Returns the object of a descriptor

        vDescriptor: a value that PackObject returned, or any other
        """
        ...
    def IsDescriptorFormat(self, vDescriptor: Any) -> bool:
        """Whether a value has the form of a descriptor

        vDescriptor: a value that PackObject returned, or any other
        """
        ...
    def RefCount(self, vDescriptor: Any) -> int:
        """The number of references to the object of a descriptor

        vDescriptor: a value that PackObject returned, or any other
        """
        ...
class Conversion(_Component):
    """Conversion and validation of attribute values, dates, times and revision numbers"""
    def GetLocaleSetting(self, lInfoType: Union[int, ByRef]) -> str:
        """A setting of the user's locale

        lInfoType: the platform's number of the locale item (14 is the decimal sign)
        """
        ...
    def GetLocaleSettings(self) -> Any:
        """The settings of the user's locale"""
        ...
    @property
    def LongDateFormat(self) -> str:
        """The user's long date pattern"""
        ...
    @property
    def LongDate(self) -> str:
        """Today as a long date"""
        ...
    @property
    def ShortDateFormat(self) -> str:
        """The user's short date pattern"""
        ...
    def ShortDate(self) -> str:
        """Today as a short date"""
        ...
    @property
    def UniversalDateFormat(self) -> str:
        """The universal date pattern"""
        ...
    def UniversalDate(self) -> str:
        """Today as a universal date"""
        ...
    @property
    def LocaleTimeFormat(self) -> str:
        """The user's time pattern"""
        ...
    def LocaleTime(self) -> str:
        """The present time in the user's form"""
        ...
    @property
    def UniversalTimeFormat(self) -> str:
        """The universal time pattern"""
        ...
    def UniversalTime(self) -> str:
        """The present time in the universal form"""
        ...
    @property
    def UniversalTimestampFormat(self) -> str:
        """The universal timestamp pattern"""
        ...
    def UniversalTimestamp(self) -> str:
        """The present moment in the universal form"""
        ...
    @property
    def TimestampFormat(self) -> str:
        """The same as UniversalTimestampFormat"""
        ...
    def Timestamp(self) -> str:
        """The same as UniversalTimestamp"""
        ...
    @property
    def LocaleTimestampFormat(self) -> str:
        """The timestamp pattern with the user's separators"""
        ...
    def LocaleTimestamp(self) -> str:
        """The present moment with the user's separators"""
        ...
    def RemoveWeekdayName(self, sDate: _Text) -> str:
        """A date without weekday names

        sDate: a date as text
        """
        ...
    def FormatAttrValueData(self, vData: Any, eDataType: Union[int, ByRef], eConvType: Union[int, ByRef]) -> Any:
        """An attribute value in its native or the user's form

        vData: the value
        eDataType: the attribute's data type
        eConvType: the form that is wanted

        Raises 11551 when an integer's value is no number.
        Raises 11553 when an integer's value has a fraction.
        Raises 11554 when a date's value is no date.
        Raises 11555 when a time's value is no time.
        Raises 13 when the value does not convert to the data type.
        Raises 6 when the value is beyond the data type's range.

        $ vlgs call Conversion.FormatAttrValueData 09:15 5 1
        33300
        """
        ...
    def CBln(self, vData: Any, bTypedReturn: Union[bool, ByRef] = ...) -> str:
        """A Boolean value as "1" or "0"

        vData: the value
        bTypedReturn: receives the Boolean

        Raises 13 when the value does not convert to a Boolean.

        $ vlgs call Conversion.CBln True
        1
        """
        ...
    def GenerateRevisionNumber(self) -> str:
        """The first revision number

        $ vlgs call Conversion.GenerateRevisionNumber
        1.0000
        """
        ...
    def IncrementRevisionNumber(self, sRevisionNumber: _Text = ...) -> str:
        """The next revision number

        sRevisionNumber: the present number; an empty text begins

        Raises 6 when the major part would pass 32 bits.

        $ vlgs call Conversion.IncrementRevisionNumber 1.9999
        2.0000
        """
        ...
    def IsValidCorvaRevisionNumber(self, sRevisionNumber: _Text) -> bool:
        """Whether a text is a revision number; normalises it

        sRevisionNumber: the text, which becomes its normalised form

        Raises 6 when a part is beyond 32 bits.
        """
        ...
    def RevNumComp(self, sRevNum1: _Text, sRevNum2: _Text) -> Any:
        """Compares two revision numbers: -1, 0, 1, or ""

        sRevNum1: a revision number
        sRevNum2: the number to compare it with

        Raises 6 when a part is beyond 32 bits.

        $ vlgs call Conversion.RevNumComp 1.2 1.10
        -1
        """
        ...
    def PostFixCharacter(self) -> str:
        """The character that the catalogue names

        Raises 13 when the catalogue's text is no number.
        Raises 5 when it is no character code.
        """
        ...
    def CTimestamp(self, vLegalLocaleTimestamp: Any, bUseDatePart: Union[bool, ByRef] = ..., bUseTimePart: Union[bool, ByRef] = ..., dtTypedReturn: _Date = ...) -> str:
        """A value as a universal timestamp, garbage dropped

        vLegalLocaleTimestamp: a moment as text in the user's form, or a value that converts to a date
        bUseDatePart: whether the date is wanted; neither part means both
        bUseTimePart: whether the time is wanted; neither part means both
        dtTypedReturn: receives the moment as a date

        Raises 11530 when the value is no moment and both parts are wanted.
        Raises 11554 when the value is no date and the date is wanted.
        Raises 11555 when the value is no time and the time is wanted.
        """
        ...
    def CTimestamp2(self, vLegalLocaleTimestamp: Any, bUseDatePart: Union[bool, ByRef] = ..., bUseTimePart: Union[bool, ByRef] = ..., dtTypedReturn: _Date = ..., bTruncGarbage: Union[bool, ByRef] = ...) -> str:
        """A value as a universal timestamp

        vLegalLocaleTimestamp: a moment as text in the user's form, or a value that converts to a date
        bUseDatePart: whether the date is wanted; neither part means both
        bUseTimePart: whether the time is wanted; neither part means both
        dtTypedReturn: receives the moment as a date
        bTruncGarbage: whether what stands around the moment is dropped

        Raises 11530 when the value is no moment and both parts are wanted.
        Raises 11554 when the value is no date and the date is wanted.
        Raises 11555 when the value is no time and the time is wanted.
        """
        ...
    def CTimestamp3(self, vLegalLocaleTimestamp: Any, bUseDatePart: Union[bool, ByRef] = ..., bUseTimePart: Union[bool, ByRef] = ..., dtTypedReturn: _Date = ..., bTruncGarbage: Union[bool, ByRef] = ..., bUseLocaleFormat: Union[bool, ByRef] = ...) -> str:
        """A value as a timestamp of either form

        vLegalLocaleTimestamp: a moment as text in the user's form, or a value that converts to a date
        bUseDatePart: whether the date is wanted; neither part means both
        bUseTimePart: whether the time is wanted; neither part means both
        dtTypedReturn: receives the moment as a date
        bTruncGarbage: whether what stands around the moment is dropped
        bUseLocaleFormat: whether the result has the user's separators

        Raises 11530 when the value is no moment and both parts are wanted.
        Raises 11554 when the value is no date and the date is wanted.
        Raises 11555 when the value is no time and the time is wanted.
        """
        ...
    def CLongDate(self, vLegalLocaleDate: Any, dtTypedReturn: _Date = ...) -> str:
        """A date in the user's long form

        vLegalLocaleDate: a date as text in the user's form, or a value that converts to one
        dtTypedReturn: receives the moment as a date

        Raises 11554 when the value is no date.
        """
        ...
    def CShortDate(self, vLegalLocaleDate: Any, dtTypedReturn: _Date = ...) -> str:
        """A date in the user's short form

        vLegalLocaleDate: a date as text in the user's form, or a value that converts to one
        dtTypedReturn: receives the moment as a date

        Raises 11554 when the value is no date.
        """
        ...
    def CUniversalDate(self, vLegalLocaleDate: Any, dtTypedReturn: _Date = ...) -> str:
        """A date in the universal form

        vLegalLocaleDate: a date as text in the user's form, or a value that converts to one
        dtTypedReturn: receives the moment as a date

        Raises 11554 when the value is no date.

        $ vlgs call Conversion.CUniversalDate 12/31/2009
        2009-12-31
        """
        ...
    def CLocaleTime(self, vLegalLocaleTime: Any, dtTypedReturn: _Date = ...) -> str:
        """A time in the user's form

        vLegalLocaleTime: a time as text in the user's form, or a value that converts to one
        dtTypedReturn: receives the moment as a date

        Raises 11555 when the value is no time.
        """
        ...
    def CUniversalTime(self, vLegalLocaleTime: Any, dtTypedReturn: _Date = ...) -> str:
        """A time in the universal form

        vLegalLocaleTime: a time as text in the user's form, or a value that converts to one
        dtTypedReturn: receives the moment as a date

        Raises 11555 when the value is no time.

        $ vlgs call Conversion.CUniversalTime '1:02 PM'
        13:02:00
        """
        ...
    def CUniversalTimestampToLocale(self, vTimestamp: Any) -> str:
        """A universal timestamp with the user's separators

        vTimestamp: a timestamp in the universal form
        """
        ...
    def IsValidDate(self, vDate: Any, sReturn: _Text = ...) -> bool:
        """Whether a value is a date

        vDate: the value
        sReturn: receives the converted text; stays as it is when the answer is False
        """
        ...
    def IsValidTime(self, vTime: Any, sReturn: _Text = ...) -> bool:
        """Whether a value is a time

        vTime: the value
        sReturn: receives the converted text; stays as it is when the answer is False
        """
        ...
    def IsValidTimestamp(self, vTimestamp: Any, sReturn: _Text = ...) -> bool:
        """Whether a value is a timestamp

        vTimestamp: the value
        sReturn: receives the converted text; stays as it is when the answer is False
        """
        ...
    def IsValidCorvaDate(self, vDate: Any, bTruncGarbage: Union[bool, ByRef] = ..., sReturn: _Text = ...) -> bool:
        """Whether a value is a date

        vDate: the value
        bTruncGarbage: whether what stands around the moment is dropped
        sReturn: receives the converted text; stays as it is when the answer is False
        """
        ...
    def IsValidCorvaTime(self, vTime: Any, bTruncGarbage: Union[bool, ByRef] = ..., sReturn: _Text = ...) -> bool:
        """Whether a value is a time

        vTime: the value
        bTruncGarbage: whether what stands around the moment is dropped
        sReturn: receives the converted text; stays as it is when the answer is False
        """
        ...
    def IsValidCorvaTimestamp(self, vTimestamp: Any, bTruncGarbage: Union[bool, ByRef] = ..., sReturn: _Text = ...) -> bool:
        """Whether a value is a timestamp

        vTimestamp: the value
        bTruncGarbage: whether what stands around the moment is dropped
        sReturn: receives the converted text; stays as it is when the answer is False
        """
        ...
class Cipher(_Component):
    """Texts enciphered with a key"""
    def encode(self, sData: _Text, sKey: _Text) -> str:
        """Enciphers a text; returns hexadecimal digits

        sData: the text
        sKey: 20 hexadecimal digits
        """
        ...
    def decode(self, sData: _Text, sKey: _Text) -> str:
        """Deciphers hexadecimal digits; returns the text

        sData: hexadecimal digits, 16 for every 8 characters
        sKey: 20 hexadecimal digits
        """
        ...
    def generateKey(self) -> str:
        """Returns a new key of 20 hexadecimal digits, made from the system timer"""
        ...
    def readEncodedFile(self, sPath: _Text, sKey: _Text) -> str:
        """Returns the deciphered content of a file

        sPath: the file's path
        sKey: 20 hexadecimal digits

        Raises 53 when there is no such file.
        Raises 76 when there is no such folder.
        Raises 70 when the file may not be read.
        """
        ...
    def writeEncodedFile(self, sPath: _Text, sKey: _Text, sData: _Text) -> None:
        """Writes a text to a file, enciphered

        sPath: the file's path
        sKey: 20 hexadecimal digits
        sData: the text

        Raises 76 when there is no such folder.
        Raises 70 when the file may not be written.
        """
        ...
class Resource(_Component):
    """Texts of messages by number and language"""
    @property
    def LanguageNative(self) -> str:
        """The native name of the user's language"""
        ...
    @property
    def LanguageEnglish(self) -> str:
        """The English name of the user's language"""
        ...
    @property
    def ResourceFilename(self) -> str:
        """The name of the resource file"""
        ...
    @property
    def ApplicationFilename(self) -> str:
        """The application that the resource file belongs to"""
        ...
    @property
    def ResourceFileVersion(self) -> str:
        """The version of the resource file"""
        ...
    @property
    def Languages(self) -> str:
        """The codes of the languages that there are texts in"""
        ...
    @property
    def LanguageOverride(self) -> str:
        """The language of texts, in place of the user's

        sLanguageCode: a language code; an empty one changes nothing
        """
        ...
    @LanguageOverride.setter
    def LanguageOverride(self, value: _Text) -> None: ...
    @property
    def MessageMin(self) -> int:
        """The lowest message number"""
        ...
    @property
    def MessageMax(self) -> str:
        """The highest message number, as text"""
        ...
    def ResourceString(self, lIndex: Union[int, ByRef], sLanguageCode: _Text = ...) -> str:
        """The text of a message

        lIndex: the message's number
        sLanguageCode: a language code as "de"; the user's language when empty

        Raises 326 when a number in range has no text.
        """
        ...
    def ResourceReplaceableString(self, Index: Union[int, ByRef], sLanguageCode: _Text, vReplaceableParams: _Items) -> str:
        """The text of a message with its insertions

        Index: the message's number
        sLanguageCode: a language code as "de"; the user's language when empty
        vReplaceableParams: an array of the texts for %1, %2 and so on

        Raises 326 when a number in range has no text.
        """
        ...
    def ResourceReplaceableString2(self, lIndex: Union[int, ByRef], sLanguageCode: _Text, vReplaceableParams: Any = ...) -> str:
        """The text of a message with its insertions

        lIndex: the message's number
        sLanguageCode: a language code as "de"; the user's language when empty
        vReplaceableParams: an array of the texts for %1, %2 and so on

        Raises 326 when a number in range has no text.
        Raises 13 when the parameters are neither an array nor left out.
        """
        ...
    def IsValidIndex(self, lIndex: Union[int, ByRef]) -> bool:
        """Whether a number is in the range of messages

        lIndex: the message's number
        """
        ...
    def Resource(self, lIndex: Union[int, ByRef], lFormat: Union[int, ByRef], sLanguageCode: _Text = ...) -> Any:
        """A resource of a kind by its number

        lIndex: the message's number
        lFormat: the kind of the resource; the file holds texts alone
        sLanguageCode: a language code as "de"; the user's language when empty

        Raises 326 when there is no such resource.
        """
        ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Collection"]) -> Collection: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.DDE"]) -> DDE: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Files"]) -> Files: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.General"]) -> General: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.GUID"]) -> GUID: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.RegUtil"]) -> RegUtil: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.RegValue"]) -> RegValue: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.CorvaTools"]) -> CorvaTools: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Buffer"]) -> Buffer: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Restricted"]) -> Restricted: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.ViewProperty"]) -> ViewProperty: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.ObjectPackager"]) -> ObjectPackager: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Conversion"]) -> Conversion: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Cipher"]) -> Cipher: ...
@overload
def Dispatch(progid: Literal["VlGeneralServices.Resource"]) -> Resource: ...
@overload
def Dispatch(progid: str) -> Any: ...
class _Constants:
    eINI_Empty: int
    eINI_VLS: int
    eINI_INI: int
    eINI_VLL: int
    _eStream_ByteArray: int
    eStream_StringArray: int
    eStream_String: int
    eHiveClassesRoot: int
    eHiveCurrUser: int
    eHiveLocalMachine: int
    eHiveUsers: int
    eHiveCurrConfig: int
    eHiveDynData: int
    eReadControl: int
    eQueryValue: int
    eSetValue: int
    eCreateSubKey: int
    eEnumSubKeys: int
    eNotify: int
    eCreateLink: int
    eVBErr: int
    eBadPath: int
    eBadKey: int
    eNoCollection: int
    eNoRegValueObject: int
    eNoKeyString: int
    eNoValueString: int
    eAsciiZString: int
    eAsciiExpandZString: int
    eBinary: int
    eDWord: int
    eDWordLittleEndian: int
    eDWordBigEndian: int
    eLink: int
    eMultiZString: int
    eResourceList: int
    eUserLock_ReadWrite: int
    eUserLock_ReadOnly: int
    eUserLock_Exclusive: int
    eUserLock_FallbackToReadOnly: int
    eAttrValDataType_Empty: int
    eAttrValDataType_Text: int
    eAttrValDataType_Integer: int
    eAttrValDataType_Real: int
    eAttrValDataType_Date: int
    eAttrValDataType_Time: int
    eAttrValDataType_Boolean: int
    eAttrValDataType_Currency: int
    eAttrValDataType_Percent: int
    eAttrValDataType_URL: int
    eAttrValDataType_VersionNumber: int
    eAttrValConvType_Empty: int
    eAttrValConvType_Native: int
    eAttrValConvType_Locale: int
    eCursorResource: int
    eBitmapResource: int
    eIconResource: int
    eMenuResource: int
    eDialogBoxResource: int
    eStringResource: int
    eFontDirectoryResource: int
    eFontResource: int
    eAcceleratorTableResource: int
    eUserDefinedResource: int
    eGroupCursorResource: int
    eGroupIconResource: int
    eInterfaceID_Empty: int
    eInterfaceID_Collection: int
    eInterfaceID_DDE: int
    eInterfaceID_Files: int
    eInterfaceID_General: int
    eInterfaceID_GUID: int
    eInterfaceID_INIFile: int
    eInterfaceID_Property: int
    eInterfaceID_RegUtil: int
    eInterfaceID_RegValue: int
    eInterfaceID_CorvaTools: int
    _eInterfaceID_Buffer: int
    _eInterfaceID_Restricted: int
    eInterfaceID_ViewProperties: int
    eInterfaceID_ViewProperty: int
    eInterfaceID_ObjectPackager: int
    eInterfaceID_Conversion: int
    eMsg_Empty: int
    eMsg_InvalidDatatype: int
    eMsg_InvalidFilepathSpecified: int
    eMsg_InvalidVLSFileFormat: int
    eMsg_NotAvailableOnNonVLSFileType: int
    eMsg_ErrorParsingVLSFile: int
    eMsg_ClassDDEDescription: int
    eMsg_ClassGeneralDescription: int
    eMsg_SectionNameCannotBeBlank: int
    eMsg_DuplicateSectionName: int
    eMsg_KeyNameCannotBeBlank: int
    eMsg_DuplicateKeyName: int
    eMsg_ErrorSavingINIFileX: int
    eMsg_ErrorReadingINIFileX: int
    eMsg_ErrorCreatingINIFileX: int
    eMsg_CannotGetExclusiveLockX: int
    eMsg_CannotGetReadWriteLockX: int
    eMsg_StreamingErrorX: int
    eMsg_SecurityCheckFailedX: int
    eMsg_ErrorReadingViewPropertiesStringX: int
    eMsg_QuotesNotEvenX: int
    eMsg_ErrorTokenizingQuotedSubStringsX: int
    eMsg_ErrorSettingPropertyStringX: int
    eMsg_ErrorWritingUserLockFileX: int
    eMsg_InvalidLockFlag: int
    eMsg_ErrorTranslatingPathToUNC: int
    eMsg_InvalidDriveMapping: int
    eMsg_ErrorConvertingDriveLetterToUNC: int
    eMsg_InvalidFormat: int
    eMsg_InvalidPathFormat: int
    eMsg_InvalidDateTimeFormat: int
    eMsg_ErrorTranslatingToRelativePath: int
    eMsg_ErrorBasePathIsNotValid: int
    eMsg_ErrorBuildingPath: int
    eMsg_ErrorBuildingBackupPrefix: int
    eMsg_ErrorExtractingPathDirLevels: int
    eMsg_ErrorExtractingPathAllLevels: int
    eMsg_ErrorInPathOp: int
    eMsg_ErrorExtractingPathVol: int
    eMsg_ErrorResolvingRelativePath: int
    eMsg_PathString: int
    eMsg_BasePathString: int
    eMsg_RelativePathString: int
    eMsg_InputPathString: int
    eMsg_ErrorCannotBuildValidPath: int
    eMsg_InvalidRelativePathFormat: int
    eMsg_PathFormatIsIn: int
    eMsg_PathFormatTypeUNC: int
    eMsg_PathFormatTypeStandard: int
    eMsg_ErrorPathIsBad: int
    eMsg_ErrorPathsOnDiffVols: int
    eMsg_AttrValueIntegerValueNotNumeric: int
    eMsg_AttrValueIntegerValueOutOfRange: int
    eMsg_AttrValueIntegerValueFractionalPartNotZero: int
    eMsg_InvalidDateFormat: int
    eMsg_InvalidTimeFormat: int
    eMsg_CannotGetDocReadWriteLockX: int
    eMsg_PostFixChar: int
    eMsg_ODBCSectionMissing: int
    eMsg_KeyDBDoesNotExit: int
    eMsg_ErrorSavingINIFile: int
    eMsg_ErrorReadingINIFile: int
    eMsg_ErrorCreatingINIFile: int
    eMsg_CannotGetExclusiveLock: int
    eMsg_CannotGetReadWriteLock: int
    eMsg_StreamingError: int
    eMsg_SecurityCheckFailed: int
    eMsg_ErrorReadingViewPropertiesString: int
    eMsg_QuotesNotEven: int
    eMsg_ErrorTokenizingQuotedSubStrings: int
    eMsg_ErrorSettingPropertyString: int
    eMsg_ErrorWritingUserLockFile: int
    eMsg_UserLockHolder: int
    eAttrDataTypes_List: int
    eAttrDataTypes_Text: int
    eAttrDataTypes_Integer: int
    eAttrDataTypes_Real: int
    eAttrDataTypes_Date: int
    eAttrDataTypes_Time: int
    eAttrDataTypes_MultiSelect: int
    eDimCopyType_Empty: int
    eDimCopyType_First: int
    eDimCopyType_Last: int
    eDimCopyType_Number: int
constants: _Constants
