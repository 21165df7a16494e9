#include "foundation/windows/single_threaded_apartment.h"

#include <exception>
#include <thread>

#include "foundation/error_boxes.h"
#include "foundation/windows/file_manager_handles.h"

namespace slib {

using file_manager_detail::ComScope;

void RunInSingleThreadedApartment(const std::function<void()>& work) {
    {
        const ComScope com;
        if (!com.inOtherApartment()) {
            work();
            return;
        }
    }
    std::exception_ptr failure;
    std::thread apartment([&] {
        const NoErrorBoxes noBoxes;
        const ComScope com;
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    });
    apartment.join();
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace slib
