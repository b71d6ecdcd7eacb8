#include "frame/status_text.h"

#include <stddef.h>

namespace rux {
namespace {

constexpr char dcCodeText[] = "Illegal code during DC stream processing";
constexpr char vlcCodeText[] = "Illegal Huffman code during VLC stream processing";
constexpr char mvCodeText[] = "Illegal Huffman code during MV stream processing";

struct StatusText {
    ruxStatus status;
    const char* text;
};

// In ascending order of the codes.
constexpr StatusText texts[] = {
    {-9999, "The requested mode is currently not supported"},
    {-9998, "The target cpu is not supported"},
    {-124, "Data under run error"},
    {-123, "Detected padding error shows the possible data corruption"},
    {-122, "Wrong value for crypto CFB block size"},
    {-121, "Invalid padding scheme"},
    {-120, "A compromised key causes suspansion of requested cryptographic operation"},
    {-119, "Wrong value of string length"},
    {-118, "Bad modulus caused a module inversion failure"},
    {-117, "Linear prediction could not be evaluated"},
    {-116, "Reflection coefficients could not be computed"},
    {-115, "Incorrect Linear Spectral Pair values"},
    {-114, "No roots are found for equation"},
    {-113, "Pass number exceeds allowed limits [0,nOfPasses-1]"},
    {-112, "Codeblock for decoding is damaged"},
    {-111, "Illegal Huffman code during CBPY stream processing"},
    {-110, "Illegal Huffman code during MCBPC Inter stream processing"},
    {-109, "Illegal Huffman code during MCBPC Intra stream processing"},
    {-108, "Step value is not pixel multiple"},
    {-107, "Number of levels for histogram is less than 2"},
    {-106, "Number of levels for LUT is less than 2"},
    {-105, "Incorrect bit offset value"},
    {-104, "Incorrect quantization parameter"},
    {-103, "Incorrect block index"},
    {-102, "Incorrect block type"},
    {-101, mvCodeText},
    {-100, vlcCodeText},
    {-99, dcCodeText},
    {-98, "Incorrect fcode value"},
    {-97, "Incorrect buffer alignment"},
    {-96, "Incorrect temporal difference"},
    {-95, "Incorrect size of block or macroblock"},
    {-94, "All BAB values are zero"},
    {-93, "Incorrect prediction direction"},
    {-92, "Incorrect number of bits per pixel"},
    {-91, "Incorrect video component mode"},
    {-90, "Incorrect DC linear mode"},
    {-83, "Prediction Mode value error"},
    {-82, "Step value is less than 8"},
    {-81, "Step value is less than 16"},
    {-80, "Frame width is less then 8"},
    {-79, "Frame height is less than or equal to zero"},
    {-78, "Expand pixels number is less than 8"},
    {-77, "Step value is less than the plane width"},
    {-76, "Quantizer value is less than or equal to zero, or greater than 31"},
    {-75, mvCodeText},
    {-74, vlcCodeText},
    {-73, dcCodeText},
    {-72, "Zigzag compact length is more than 64"},
    {-71, "Incorrect value of the filter bank frequency parameter"},
    {-70, "Incorrect value of the filter bank parameter"},
    {-69, "Filter bank is not correctly initialized"},
    {-67, "Negative occupation count"},
    {-66, "Incorrect value of the codebook flag parameter"},
    {-65, "No convergence of SVD algorithm"},
    {-64, "JPEG Huffman table is destroyed"},
    {-63, "JPEG DCT coefficient is out of the range"},
    {-62, "Attempt to access out of the buffer"},
    {-61, "System error in the draw text operation"},
    {-60, "Wrong order of the destination channels"},
    {-59, "All values of the mask are zero"},
    {-58, "The quadrangle degenerates into triangle, line or point"},
    {-57, "Size of the rectangle region is less than or equal to 1"},
    {-56, "Unallowable values of the transformation coefficients"},
    {-55, "Bad value of noise amplitude for dithering"},
    {-54, "Number of dithering levels is out of range"},
    {-53, "Bad or unsupported number of channels"},
    {-52, "COI is out of range"},
    {-51, "Divisor is equal to zero, function is aborted"},
    {-50, "Illegal type of image compositing operation"},
    {-49, "Gamma range bounds is less than or equal to zero"},
    {-48, "Sum of the conversion coefficients must be less than or equal to 1"},
    {-47, "Illegal channel number"},
    {-46, "Tone magnitude is less than or equal to zero"},
    {-45, "Tone frequency is negative, or greater than or equal to 0.5"},
    {-44, "Tone phase is negative, or greater than or equal to 2*PI"},
    {-43, "Triangle magnitude is less than or equal to zero"},
    {-42, "Triangle frequency is negative, or greater than or equal to 0.5"},
    {-41, "Triangle phase is negative, or greater than or equal to 2*PI"},
    {-40, "Triangle asymmetry is less than -PI, or greater than or equal to PI"},
    {-39, "Kaiser window is too huge"},
    {-38, "Magnitude value is negative"},
    {-37, "Stride value is less than the row length"},
    {-36, "Negative epsilon value error"},
    {-35, "Invalid offset value of wavelet filter"},
    {-34, "Anchor point is outside the mask"},
    {-33, "Invalid mask size"},
    {-32, "Shift value is less than zero"},
    {-31, "Sampling factor is less than or equal to zero"},
    {-30, "Phase value is out of range: 0 <= phase < factor"},
    {-29, "MR FIR sampling factor is less than or equal to zero"},
    {-28, "MR FIR sampling phase is negative, or greater than or equal to the sampling factor"},
    {-27, "Relative frequency value is out of range"},
    {-26, "Length of a FIR filter is less than or equal to zero"},
    {-25, "Order of an IIR filter is less than or equal to zero"},
    {-24, "Invalid value of the delay line sample index"},
    {-23, "Resize factor(s) is less than or equal to zero"},
    {-22, "Invalid interpolation mode"},
    {-21, "Invalid flip mode"},
    {-20, "Moment value M(0,0) is too small to continue calculations"},
    {-19, "Negative value of the level in the threshold operation"},
    {-18, "Invalid threshold bounds"},
    {-17, "Context parameter doesn't match the operation"},
    {-16, "Invalid value of the FFT flag parameter"},
    {-15, "Invalid value of the FFT order parameter"},
    {-14, "Step value is less than or equal to zero"},
    {-13, "Scale bounds are out of the range"},
    {-12, "Bad or unsupported data type"},
    {-11, "Argument is out of range or point is outside the image"},
    {-10, "An attempt to divide by zero"},
    {-9, "Not enough memory allocated for the operation"},
    {-8, "Null pointer error"},
    {-7, "Bad values of bounds: the lower bound is greater than the upper bound"},
    {-6, "Wrong value of data size"},
    {-5, "Function arg/param is bad"},
    {-4, "Not enough memory for the operation"},
    {-2, "Unknown/unspecified error"},
    {0, "No error, it's OK"},
    {1, "No operation has been executed"},
    {2, "Misaligned pointer in operation in which it must be aligned"},
    {3, "Negative value(s) of the argument in the function Sqrt"},
    {4, "INF result. Zero value was met by InvThresh with zero level"},
    {5, "Even size of the Median Filter mask was replaced by the odd one"},
    {6, "Zero value(s) of the divisor in the function Div"},
    {7, "Zero value(s) of the argument in the function Ln"},
    {8, "Negative value(s) of the argument in the function Ln"},
    {9, "Not a Number argument value warning"},
    {10, "JPEG marker was met in the bitstream"},
    {11, "All result values are floored"},
    {12, "Overflow occurred in the operation"},
    {13, "Quantized LP syntethis filter stability check is applied at the low boundary of [0,pi]"},
    {14, "Quantized LP syntethis filter stability check is applied at the high boundary of [0,pi]"},
    {15, "Quantized LP syntethis filter stability check is applied at both boundaries of [0,pi]"},
    {16, "Zero occupation count"},
    {17, "Underflow occurred in the operation"},
    {18, "Singularity occurred in the operation"},
    {19, "Argument is out of the function domain"},
    {20, "The target cpu is not Genuine Ortan"},
    {21, "The library for given cpu cannot be set"},
    {22, "Application does not contain RUX functions calls"},
    {23, "The newest version of RUX dll's not found by dispatcher"},
    {24, "The function does nothing in the dynamic version of the library"},
    {25, "Insufficient entropy in the random seed and stimulus bit string caused the prime/key generation to fail"},
    {26, "Number of destination strings is more than expected"},
    {27, "Length of one of the destination strings is more than expected"},
};

}

const char* statusText(ruxStatus status)
{
    size_t first = 0;
    size_t last = sizeof texts / sizeof texts[0];
    while (first < last) {
        const size_t middle = (first + last) / 2;
        if (texts[middle].status == status) return texts[middle].text;
        if (texts[middle].status < status)
            first = middle + 1;
        else
            last = middle;
    }
    return "Unknown Status Code";
}

}
