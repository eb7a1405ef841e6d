#include "platform/macos/adapters.h"
#include "platform/macos/conversions.h"
#include "platform/macos/main_queue.h"
#include "platform/main_thread.h"

using zorvane::platform::ManifestFetcher;
using zorvane::platform::ManifestResponse;

namespace
{

/** Nothing is taken from a server that need not prove who it is. */
bool isSecure(NSURL *url)
{
    return [url.scheme.lowercaseString isEqualToString:@"https"];
}

ManifestFetcher::Result failure(NSInteger code)
{
    return *zorvane::platform::macos::errorOf([NSError errorWithDomain:NSURLErrorDomain
                                                                  code:code
                                                              userInfo:nil]);
}

} // namespace

/** One exchange: gathers the answer and lets go of what is too long. Called on one queue. */
@interface ZorvaneManifestExchange : NSObject <NSURLSessionDataDelegate>
- (instancetype)initWithLongestBody:(qsizetype)longestBody done:(ManifestFetcher::Completion)done;
@end

@implementation ZorvaneManifestExchange {
    qsizetype _longestBody;
    ManifestFetcher::Completion _done;
    QByteArray _body;
}

- (instancetype)initWithLongestBody:(qsizetype)longestBody done:(ManifestFetcher::Completion)done
{
    self = [super init];
    if (self != nil) {
        _longestBody = longestBody;
        _done = std::move(done);
    }
    return self;
}

- (void)URLSession:(NSURLSession *)__unused session
                          task:(NSURLSessionTask *)__unused task
    willPerformHTTPRedirection:(NSHTTPURLResponse *)__unused response
                    newRequest:(NSURLRequest *)request
             completionHandler:(void (^)(NSURLRequest *))completionHandler
{
    // Without a new request the redirect itself is the answer.
    completionHandler(isSecure(request.URL) ? request : nil);
}

- (void)URLSession:(NSURLSession *)__unused session
          dataTask:(NSURLSessionDataTask *)task
    didReceiveData:(NSData *)data
{
    const auto room = static_cast<NSUInteger>(_longestBody + 1 - _body.size());
    const NSUInteger taken = MIN(room, data.length);
    _body += QByteArray::fromNSData([data subdataWithRange:NSMakeRange(0, taken)]);
    if (_body.size() > _longestBody)
        [task cancel];
}

- (void)URLSession:(NSURLSession *)__unused session
                    task:(NSURLSessionTask *)task
    didCompleteWithError:(NSError *)error
{
    const bool isTooLong = _body.size() > _longestBody; // then the error is our own cancelling
    if (error != nil && !isTooLong)
        _done(*zorvane::platform::macos::errorOf(error));
    else if ([task.response isKindOfClass:NSHTTPURLResponse.class])
        _done(ManifestResponse{
            static_cast<int>(static_cast<NSHTTPURLResponse *>(task.response).statusCode), _body});
    else
        _done(failure(NSURLErrorBadServerResponse));
}

@end

namespace zorvane::platform::macos
{

namespace
{

NSURLRequest *requestOf(const ManifestRequest &request, NSURL *address)
{
    NSMutableURLRequest *const result = [NSMutableURLRequest
         requestWithURL:address
            cachePolicy:NSURLRequestReloadIgnoringLocalCacheData
        timeoutInterval:std::chrono::duration<double>(request.idleTimeout).count()];
    [result setValue:QString::fromLatin1(request.accept).toNSString() forHTTPHeaderField:@"Accept"];
    return result;
}

class SessionManifestFetcher final : public ManifestFetcher
{
public:
    void fetch(const ManifestRequest &request, Completion done) override
    {
        @autoreleasepool {
            const std::weak_ptr<const void> owner = m_lifetime.watch();
            const Completion answer = [owner, done = std::move(done)](const Result &result) {
                onMainQueue(owner, [done, result] { done(result); });
            };
            NSURL *const address = request.address.toNSURL();
            if (!isSecure(address)) {
                answer(failure(NSURLErrorUnsupportedURL));
                return;
            }
            NSURLSessionDataTask *const task =
                [NSURLSession.sharedSession dataTaskWithRequest:requestOf(request, address)];
            task.delegate = [[ZorvaneManifestExchange alloc] initWithLongestBody:request.longestBody
                                                                            done:answer];
            [task resume];
            // Cancelling a task that has ended does nothing. On a queue that needs no loop of ours.
            dispatch_after(dispatch_time(DISPATCH_TIME_NOW,
                               std::chrono::nanoseconds(request.totalTimeout).count()),
                dispatch_get_global_queue(QOS_CLASS_UTILITY, 0), ^{ [task cancel]; });
        }
    }

private:
    Lifetime m_lifetime;
};

} // namespace

std::unique_ptr<ManifestFetcher> makeManifestFetcher()
{
    return std::make_unique<SessionManifestFetcher>();
}

} // namespace zorvane::platform::macos
