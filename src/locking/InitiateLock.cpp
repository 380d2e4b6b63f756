// SPDX-License-Identifier: MIT
#include "locking/InitiateLock.h"

#include "base/Error.h"
#include "frame/Errors.h"
#include "ini/PathParts.h"
#include "locking/LockFiles.h"
#include "platform/Files.h"
#include "platform/Guid.h"
#include "platform/Volumes.h"

#include <chrono>
#include <thread>

namespace vlgs {

namespace {

constexpr const char16_t* source = u"VlGeneralServices.modCorvaTools.g_InitiateLock";

[[noreturn]] void raiseUnwritable(const String& path, const Error& cause) {
    raiseMessage(source, eMsg_ErrorWritingUserLockFileX, concat(path, u"\r\n", cause.description()));
}

/// A few short waits of random length, so that two who meet do not meet again and again.
class Patience {
  public:
    bool over() const noexcept { return left_ == 0; }
    /// One more try, of a bounded number.
    bool prolong() noexcept {
        left_ = 1;
        return prolonged_++ < mostProlonged;
    }
    void wait() {
        --left_;
        const auto random = createGuid().bytes;
        std::this_thread::sleep_for(shortest +
                                    std::chrono::microseconds((random[0] << 8 | random[1]) % 8192));
    }

  private:
    static constexpr std::chrono::microseconds shortest{1000};
    static constexpr int mostProlonged = 100;
    int left_ = 6;
    int prolonged_ = 0;
};

class Taker {
  public:
    explicit Taker(const LockRequest& request)
        : request_(request), target_(request.path, request.document),
          type_(enumUserLockTypes(request.type & ~eUserLock_FallbackToReadOnly)),
          falls_((request.type & eUserLock_FallbackToReadOnly) != 0), own_(filePart(request.ownFile)) {}

    LockGrant take() {
        sweepLockFiles(target_.folder());
        if (type_ == eUserLock_ReadOnly)
            return readOnly();
        if (auto lock = takeWriting())
            return {std::move(lock), type_};
        if (falls_)
            return readOnly();
        raiseConflict();
    }

  private:
    /// The lock file, first made and then kept if nobody else is in the way; none on a conflict.
    Ref<INIFile> takeWriting() {
        const String name = target_.fileNameFor(type_);
        Ref<INIFile> lock;
        for (Patience patience;; patience.wait()) {
            if (!lock)
                lock = make(name, patience.over());
            // A name in use is a conflict even where it is the caller's own.
            obstacles_ = target_.obstaclesTo(type_, lock ? name : String(), lock ? own_ : String());
            if (lock && obstacles_.empty())
                return lock;
            if (patience.over()) {
                if (target_.isBlocked(name))
                    raiseUnwritable(concat(target_.folder(), name), Error(RunTimeError::FileAlreadyExists));
                // Whoever had the name has just gone: the next try may find it free.
                if (!obstacles_.empty() || !patience.prolong())
                    return nullptr;
            }
            // Of two that meet the exclusive one gives way.
            if (type_ == eUserLock_Exclusive)
                lock = nullptr;
        }
    }

    /// None when somebody has a file of that name.
    Ref<INIFile> make(const String& name, bool last) {
        const String path = concat(target_.folder(), name);
        try {
            return makeLockFile(path, holder(type_));
        } catch (const Error& error) {
            // A file that is just being deleted refuses a new one too.
            const bool mayPass = !last && error.is(RunTimeError::PermissionDenied);
            if (error.is(RunTimeError::FileAlreadyExists) || mayPass)
                return nullptr;
            raiseUnwritable(path, error);
        }
    }

    LockGrant readOnly() {
        if (target_.isDocument())
            return {};
        const String path = concat(target_.folder(), target_.fileNameFor(eUserLock_ReadOnly));
        try {
            return {makeLockFile(path, holder(eUserLock_ReadOnly))};
        } catch (const Error& error) {
            if (error.is(RunTimeError::PermissionDenied))
                return {}; // a folder closed to writing can be read all the same
            raiseUnwritable(path, error);
        }
    }

    LockHolder holder(enumUserLockTypes granted) {
        if (session_.empty())
            session_ = request_.session.empty() ? guidText(createGuid()) : request_.session;
        return {granted, type_, session_, fullPath(request_.path)};
    }

    [[noreturn]] void raiseConflict() const {
        String holders;
        for (const auto& name : obstacles_)
            holders =
                concat(holders, holders.empty() ? u"" : u"\r\n", holderText(concat(target_.folder(), name)));
        raiseMessage(source,
                     target_.isDocument()           ? eMsg_CannotGetDocReadWriteLockX
                     : type_ == eUserLock_Exclusive ? eMsg_CannotGetExclusiveLockX
                                                    : eMsg_CannotGetReadWriteLockX,
                     holders);
    }

    const LockRequest& request_;
    LockTarget target_;
    enumUserLockTypes type_;
    bool falls_;
    String own_;
    String session_;
    std::vector<String> obstacles_;
};

void requireFolder(const String& path) {
    if (!folderExists(folderOf(path)))
        raiseMessage(source, eMsg_ErrorWritingUserLockFileX, path);
}

void requireType(enumUserLockTypes type) {
    const auto plain = type & ~eUserLock_FallbackToReadOnly;
    if (plain < eUserLock_ReadWrite || plain > eUserLock_Exclusive)
        raiseMessage(source, eMsg_InvalidLockFlag);
}

} // namespace

LockGrant g_InitiateLock(const LockRequest& request) {
    requireType(request.type);
    return underSource(source, [&] {
        requireFolder(request.path);
        std::optional<Taker> taker;
        try {
            taker.emplace(request);
        } catch (const Error& error) {
            raiseUnwritable(request.document ? *request.document : request.path, error);
        }
        return taker->take();
    });
}

Ref<INIFile> g_FindExclusiveLock(const String& path, const String& ownFile) {
    return underSource(source, [&]() -> Ref<INIFile> {
        requireFolder(path);
        const LockTarget project(path, std::nullopt);
        // An exclusive lock is in the way of a read-write one, and nothing else is.
        const auto found = project.obstaclesTo(eUserLock_ReadWrite, {}, filePart(ownFile));
        return found.empty() ? nullptr : readLockFile(concat(project.folder(), found.front()));
    });
}

} // namespace vlgs
