! The Fortran runtime's formatted READ and WRITE of the columns of a table of measurements: four
! whole numbers, then four with three decimals, each ten characters wide. One file at a time.
module columns
  use, intrinsic :: iso_c_binding, only: c_char, c_double, c_int
  implicit none
  private

  character(len=*), parameter :: row = '(4I10,4F10.3)'
  integer :: unit

contains

  ! Opens the file whose path is the `length` characters of `path`, to be written anew if `writing`
  ! isn't 0.
  subroutine open_columns(path, length, writing) bind(C)
    integer(c_int), value :: length, writing
    character(kind=c_char), intent(in) :: path(length)
    character(len=length) :: name
    name = transfer(path, name)
    if (writing /= 0) then
      open(newunit=unit, file=name, action='write', status='replace')
    else
      open(newunit=unit, file=name, action='read', status='old')
    end if
  end subroutine

  ! Reads the next line; 0 if there was one.
  integer(c_int) function read_columns(counts, values) bind(C)
    integer(c_int), intent(out) :: counts(4)
    real(c_double), intent(out) :: values(4)
    read(unit, row, iostat=read_columns) counts, values
  end function

  subroutine write_columns(counts, values) bind(C)
    integer(c_int), intent(in) :: counts(4)
    real(c_double), intent(in) :: values(4)
    write(unit, row) counts, values
  end subroutine

  subroutine close_columns() bind(C)
    close(unit)
  end subroutine

end module
