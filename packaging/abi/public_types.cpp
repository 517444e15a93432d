// Every public type, for the debug information that packaging/abi/describe.py reads: one
// exported function that takes them all.
#include <jqglobalclass.h>
#include <jqimageconvert.h>
#include <jqimagestitching.h>

void PublicTypes(JQImageStitching*, JQStitchingAlgorithm*, _tagJQIMG*) {}
