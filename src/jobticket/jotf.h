// Everything of the job-ticket writer in one include: the frame and sink,
// media and special pages, job attributes and the export.
#pragma once

#include "jobticket/jotf_color.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_frame.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_media.h"
#include "jobticket/jotf_page_size.h"
#include "jobticket/jotf_sink.h"
#include "jobticket/jotf_special_pages.h"
