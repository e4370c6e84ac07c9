# The names by which desktops know the program and its files, all derived from the one host in VANTOR_SITE:
# vantor.example gives the application example.vantor.Prep and the file type example.vantor.shootfile.

string(TOLOWER "${VANTOR_SITE}" VANTOR_REVERSED_SITE)
# An element of such a name may hold no hyphen and begin with no digit.
string(REPLACE "-" "_" VANTOR_REVERSED_SITE "${VANTOR_REVERSED_SITE}")
string(REPLACE "." ";" VANTOR_REVERSED_SITE "${VANTOR_REVERSED_SITE}")
list(REVERSE VANTOR_REVERSED_SITE)
list(TRANSFORM VANTOR_REVERSED_SITE REPLACE "^([0-9])" "_\\1")
list(JOIN VANTOR_REVERSED_SITE "." VANTOR_REVERSED_SITE)

set(VANTOR_APPLICATION_ID "${VANTOR_REVERSED_SITE}.Prep")
set(VANTOR_SHOOT_FILE_ID "${VANTOR_REVERSED_SITE}.shootfile")
# The identifier as a media type of the vendor tree; the suffix tells that every JSON reader can read it.
set(VANTOR_SHOOT_FILE_TYPE "application/vnd.${VANTOR_SHOOT_FILE_ID}+json")
# Sandboxes take over only icons whose names begin with the application's.
set(VANTOR_SHOOT_FILE_ICON "${VANTOR_APPLICATION_ID}.shootfile")
