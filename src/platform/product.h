/* The product's name and version, shared by the code and the version resource. */
#ifndef QUELLIX_PRODUCT_H
#define QUELLIX_PRODUCT_H

#define QUELLIX_PRODUCT_NAME "Quellix"
#define QUELLIX_VERSION_MAJOR 1
#define QUELLIX_VERSION_MINOR 0
#define QUELLIX_VERSION_TEXT "1.0"
#define QUELLIX_CAPTION "Quellix v1.0"

#endif
