// Peers in OpenCV: a function over views of benchmark images, which the work holds on to.
#pragma once

#ifdef RUX_WITH_OPENCV
#include <utility>

#include "peers.h"

namespace rux::bench {

template <typename A, typename B, typename C, typename Function>
MakeWork opencvWork(int32_t channels, Function function)
{
    return [=](Size size) {
        const Image<A> a(size, channels);
        const Image<B> b(size, channels);
        const Image<C> c(size, channels);
        return Work{a.bytes(), [=] {
                        const cv::Mat first = matrixOf(a, size, channels), second = matrixOf(b, size, channels);
                        cv::Mat result = matrixOf(c, size, channels);
                        function(first, second, result);
                    }};
    };
}

}
#define RUX_PEER(A, B, C, channels, ...) "opencv", opencvWork<A, B, C>(channels, __VA_ARGS__)
#else
#define RUX_PEER(A, B, C, channels, ...) "", nullptr
#endif
