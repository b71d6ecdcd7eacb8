// Variable-length codes; a new structure is filled word by word.
#include "video/huffman_words.h"
