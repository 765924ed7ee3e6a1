// OpenCV's time for the nearest thing, on the same picture with wrapped borders, on one thread.
// Three channels, since it has no notion of a fourth that is left alone.
#include <benchmark/benchmark.h>

#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

namespace {

constexpr int side = 512;
constexpr double pi = 3.14159265358979323846;

cv::Mat NoisePicture() {
    cv::Mat picture(side, side, CV_8UC3);
    cv::RNG generator(1);
    generator.fill(picture, cv::RNG::UNIFORM, 0, 256);
    return picture;
}

/// `filter2D` knows no wrapped border of its own: the border is copied first.
cv::Mat FilterWrapped(const cv::Mat& picture, const cv::Mat& kernel) {
    const int border = kernel.rows / 2;
    cv::Mat padded;
    cv::copyMakeBorder(picture, padded, border, border, border, border, cv::BORDER_WRAP);
    cv::Mat filtered;
    cv::filter2D(padded, filtered, -1, kernel);
    return filtered(cv::Rect(border, border, side, side)).clone();
}

/// The bell of Blur, which falls to 1 / 360 at a distance of 2 `reach`.
cv::Mat BlurKernel(double reach) {
    const int half = static_cast<int>(1.0 + reach);
    cv::Mat kernel(2 * half + 1, 2 * half + 1, CV_32F);
    for (int y = -half; y <= half; ++y) {
        for (int x = -half; x <= half; ++x) {
            const double z = std::hypot(x, y) / (2.0 * reach);
            kernel.at<float>(y + half, x + half) = static_cast<float>(std::pow(360.0, -z * z));
        }
    }
    return kernel / cv::sum(kernel)[0];
}

cv::Mat SharpenKernel() {
    return (cv::Mat_<float>(3, 3) << -0.07, -0.1, -0.07, -0.1, 1.68, -0.1, -0.07, -0.1, -0.07);
}

/// A trail up and to the right.
cv::Mat TrailKernel(int length) {
    cv::Mat kernel = cv::Mat::zeros(2 * length - 1, 2 * length - 1, CV_32F);
    for (int i = 0; i < length; ++i) {
        kernel.at<float>(length - 1 - i, length - 1 + i) = static_cast<float>(length - i);
    }
    return kernel / cv::sum(kernel)[0];
}

/// Interpolates every pixel, with wrapped coordinates.
cv::Mat Remapped(const cv::Mat& picture, cv::Point2f (*source)(int x, int y)) {
    cv::Mat map(side, side, CV_32FC2);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            map.at<cv::Point2f>(y, x) = source(x, y);
        }
    }
    cv::Mat moved;
    cv::remap(picture, moved, map, cv::noArray(), cv::INTER_LINEAR, cv::BORDER_WRAP);
    return moved;
}

cv::Point2f WaveSource(int x, int y) {
    constexpr double step = 2 * pi / side;
    return {static_cast<float>(x + 32 * std::sin(2 * y * step)),
            static_cast<float>(y + 32 * std::sin(2 * x * step))};
}

cv::Point2f SkewSource(int x, int y) {
    return {static_cast<float>(x), static_cast<float>(y - x)};
}

cv::Mat Saturated(const cv::Mat& picture) {
    cv::Mat hls;
    cv::cvtColor(picture, hls, cv::COLOR_RGB2HLS);
    cv::Mat channels[3];
    cv::split(hls, channels);
    channels[2] *= 1.5;
    cv::merge(channels, 3, hls);
    cv::Mat result;
    cv::cvtColor(hls, result, cv::COLOR_HLS2RGB);
    return result;
}

cv::Mat Contrasted(const cv::Mat& picture) {
    cv::Mat table(1, 256, CV_8U);
    for (int i = 0; i < 256; ++i) {
        table.at<unsigned char>(i) = cv::saturate_cast<unsigned char>((i - 128) * 1.5 + 140);
    }
    cv::Mat result;
    cv::LUT(picture, table, result);
    return result;
}

cv::Mat Filled(const cv::Mat& picture) {
    cv::Mat result = picture.clone();
    cv::floodFill(result, cv::Point(0, 0), cv::Scalar(1, 2, 3), nullptr, cv::Scalar::all(255),
                  cv::Scalar::all(255), cv::FLOODFILL_FIXED_RANGE | 4);
    return result;
}

template <typename Operation>
void Register(const std::string& row, Operation operation) {
    benchmark::RegisterBenchmark((row + "/opencv").c_str(), [operation](benchmark::State& state) {
        cv::setNumThreads(1);
        const cv::Mat picture = NoisePicture();
        for (auto _ : state) {
            benchmark::DoNotOptimize(operation(picture).data);
        }
    })->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
    using cv::Mat;
    Register("blur, default", [](const Mat& p) { return FilterWrapped(p, BlurKernel(2.0)); });
    Register("blur, worst case", [](const Mat& p) { return FilterWrapped(p, BlurKernel(10.0)); });
    Register("sharpen, default", [](const Mat& p) { return FilterWrapped(p, SharpenKernel()); });
    Register("blur, motion", [](const Mat& p) { return FilterWrapped(p, TrailKernel(5)); });
    Register("blur, motion, worst case",
             [](const Mat& p) { return FilterWrapped(p, TrailKernel(25)); });
    Register("waves, default", [](const Mat& p) { return Remapped(p, WaveSource); });
    Register("skew, worst case", [](const Mat& p) { return Remapped(p, SkewSource); });
    Register("saturation, default", Saturated);
    Register("brightnessContrast, default", Contrasted);
    Register("Fill, whole tile", Filled);
    Register("Fill, whole tile, hard contour", Filled);
    return true;
}();

}  // namespace
